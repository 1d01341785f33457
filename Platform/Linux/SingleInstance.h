#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Platform/Linux/FileDescriptor.h"

class QSocketNotifier;

namespace zephyx {

/// One running host per user and display. The lock is the process's own and ends with it, however
/// it ends, so the socket of a holder that was killed is never in the way. Main thread.
class SingleInstance {
 public:
  enum class Outcome { first, second, unreachable };

  /// `folder` is private to the user; `display` names the X display.
  SingleInstance(const std::string& folder, const std::string& display);
  ~SingleInstance();

  /// Becomes the one instance, or asks the one that runs to reopen and waits for its word.
  Outcome claim();

  /// Calls `onReopen` for each further start, those since `claim` included. Needs the main loop.
  void listen(std::function<void()> onReopen);
  void stopListening();

 private:
  bool takeLock();
  bool openSocket();
  bool askToReopen() const;
  void answerCallers();

  std::string lockPath_;
  std::string socketPath_;
  FileDescriptor lock_;
  FileDescriptor socket_;
  std::function<void()> onReopen_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace zephyx
