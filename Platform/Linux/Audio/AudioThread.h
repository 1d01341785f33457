#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "Platform/Linux/Audio/SoundServer.h"
#include "Platform/Linux/EventFd.h"

namespace zephyx {

/// The thread that talks to the sound server. By the thread that made it, except where a method
/// says otherwise.
class AudioThread {
 public:
  using Command = std::function<void(SoundServer&)>;

  /// `onInput` runs on the new thread.
  explicit AudioThread(SoundServer::InputHandler onInput);
  AudioThread(const AudioThread&) = delete;
  AudioThread& operator=(const AudioThread&) = delete;
  /// Waits for no server.
  ~AudioThread();

  /// Runs the command on the thread, soon; never when there is no sound library. Any thread.
  void post(Command command);

 private:
  void run(SoundServer::InputHandler onInput);
  void runCommands(SoundServer& server);

  EventFd wake_;
  std::atomic<bool> isStopping_{false};
  std::atomic<bool> hasLibrary_{true};
  std::mutex mutex_;
  std::vector<Command> commands_;
  std::thread thread_;
};

}  // namespace zephyx
