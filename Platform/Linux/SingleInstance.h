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

  /// What the paths of this user's files about this display begin with, in `folder`.
  const std::string& basePath() const { return basePath_; }

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

  const std::string basePath_;
  const std::string lockPath_;
  const std::string socketPath_;
  FileDescriptor lock_;
  FileDescriptor socket_;
  std::function<void()> onReopen_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace zephyx
