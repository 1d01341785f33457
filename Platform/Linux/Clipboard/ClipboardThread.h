#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "Platform/Linux/Clipboard/ClipboardWorker.h"
#include "Platform/Linux/EventFd.h"

namespace zephyx {

/// The thread that talks to the X server about the clipboard. Any thread may call, except where a
/// method says otherwise. A connection that breaks is made anew, and questions wait for that; once
/// `stop` was called, they are answered with nothing.
class ClipboardThread {
 public:
  ClipboardThread();
  ClipboardThread(const ClipboardThread&) = delete;
  ClipboardThread& operator=(const ClipboardThread&) = delete;
  ~ClipboardThread() { stop(); }

  /// Ends the thread; those who wait for an answer get none. By the thread that made this object.
  void stop();
  bool announcesChanges() const { return thread_.joinable(); }

  /// Readable when there is news.
  const EventFd& announcement() const { return announcement_; }
  /// The next copy of another program, or answer to `save`, in order.
  std::optional<ClipboardNews> takeNews();

  void setPlan(PasteboardReadPlan plan);
  /// The future gives whether it worked; or an exception when the thread ended before.
  std::future<bool> own(std::shared_ptr<const OwnedContents> contents, std::uint64_t writeNumber);
  std::future<bool> ownPrimary(std::shared_ptr<const OwnedContents> contents);
  /// Asks for everything of the newest copy; the number under which the news has it. 0 when there
  /// will be no answer.
  std::uint64_t save();
  /// As `ClipboardWorker::takeSelectedText`; what it finds is news.
  bool takeSelectedText(xcb_window_t window);

  // These wait for the clipboard's owner, as long as the deadlines allow. Not on the main thread.
  std::optional<SelectionPayload> fetch(std::uint64_t number, const TypeOffer& offer);
  CopySnapshot readUnannounced();

 private:
  using Command = std::function<void(ClipboardWorker&)>;

  bool post(Command command);
  std::vector<Command> takeCommands();
  void run(std::unique_ptr<ClipboardWorker> worker);
  /// The next worker; null when the end comes first.
  std::unique_ptr<ClipboardWorker> connectAgain(std::unique_ptr<ClipboardWorker> former);
  void announce(std::vector<ClipboardNews> news);
  void close();

  EventFd wake_;
  EventFd announcement_;
  std::atomic<bool> isStopping_{false};
  std::mutex mutex_;
  bool isClosed_ = false;
  std::vector<Command> commands_;
  std::deque<ClipboardNews> news_;
  std::atomic<std::uint64_t> lastQuestion_{0};
  std::thread thread_;
};

}  // namespace zephyx
