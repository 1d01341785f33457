#pragma once

#include <string>
#include <vector>

#include "Tests/Desktop/VirtualDesktop.h"

namespace zephyx {

/// The PulseAudio server of a desktop with a loudspeaker and two microphones, "mic0", which is the
/// default one, and "mic1". What is asked and changed here goes through its own tool, pactl.
class PulseServer {
 public:
  /// Starts it; returns when it answers.
  explicit PulseServer(const VirtualDesktop& desktop);

  ChildProcess& process() { return process_; }

  void makeDefault(const std::string& source) const;
  void setMute(const std::string& source, bool muted) const;
  void setVolume(const std::string& source, float volume) const;
  /// Only what the loudspeaker plays can be recorded from then on.
  void unplugMicrophones() const;

  /// Whether a program of this name is connected.
  bool hasClient(const std::string& name) const;
  bool isMuted(const std::string& source) const;
  float volume(const std::string& source) const;

 private:
  std::string pactl(const std::vector<std::string>& arguments) const;

  const VirtualDesktop& desktop_;
  ChildProcess process_;
};

}  // namespace zephyx
