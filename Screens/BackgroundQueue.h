#pragma once

#include <QtCore/QObject>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace zephyx {

/// One thread that runs work in order. Its results come back to the thread that made the queue,
/// through Qt's event loop. When the queue ends, work that was given is still done, but its results
/// are dropped.
class BackgroundQueue {
 public:
  BackgroundQueue();
  BackgroundQueue(const BackgroundQueue&) = delete;
  BackgroundQueue& operator=(const BackgroundQueue&) = delete;
  ~BackgroundQueue();

  /// Runs `work()` on the queue's thread.
  template <typename Work>
  void run(Work work) {
    post([work = std::make_shared<Work>(std::move(work))] { (*work)(); });
  }

  /// Runs `work()` on the queue's thread, then `done(result)` on the owner's. Both may be
  /// move-only.
  template <typename Work, typename Done>
  void run(Work work, Done done) {
    auto task = std::make_shared<std::pair<Work, Done>>(std::move(work), std::move(done));
    post([this, task = std::move(task)]() mutable {
      auto result = std::make_shared<decltype(task->first())>(task->first());
      QMetaObject::invokeMethod(
          &receiver_,
          [task = std::move(task), result = std::move(result)] {
            task->second(std::move(*result));
          },
          Qt::QueuedConnection);
    });
  }

 private:
  void post(std::function<void()> task);
  void loop();

  QObject receiver_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void()>> tasks_;
  bool ending_ = false;
  std::thread thread_;
};

}  // namespace zephyx
