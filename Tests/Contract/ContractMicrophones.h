#pragma once

namespace zephyx {

/// Two microphones, 0 and 1, each with a switch and a volume, and other programs that use them. Not
/// there before `connect`. Calls return when other programs can see what they did.
class ContractMicrophones {
 public:
  virtual ~ContractMicrophones() = default;

  /// The first one becomes the default one, switched on.
  virtual void connect() = 0;
  virtual void disconnect() = 0;
  virtual void makeDefault(int microphone) = 0;
  virtual void setMute(int microphone, bool muted) = 0;
  virtual void setVolume(int microphone, float volume) = 0;

  virtual bool isMuted(int microphone) = 0;
  virtual float volume(int microphone) = 0;
};

}  // namespace zephyx
