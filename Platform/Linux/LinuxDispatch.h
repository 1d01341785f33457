#pragma once

#include <QtCore/QObject>
#include <QtCore/QThreadPool>
#include <thread>

#include "Platform/Dispatch.h"

namespace zephyx {

/// Queues on the toolkit's main loop and on a pool of threads. Made on the main thread.
class LinuxDispatch final : public Dispatch {
 public:
  LinuxDispatch();
  ~LinuxDispatch() override;

  DispatchQueue& mainQueue() override { return main_; }
  DispatchQueue& globalQueue() override { return global_; }
  bool isMainThread() const override { return std::this_thread::get_id() == mainThread_; }
  [[nodiscard]] Registration scheduleRepeatingTimer(double interval,
                                                    std::function<void()> block) override;
  double wallClock() const override;

  /// Waits until the global queue is empty.
  void finishGlobalWork() { pool_.waitForDone(); }

 private:
  class MainQueue final : public QObject, public DispatchQueue {
   public:
    void async(std::function<void()> block) override;
    void asyncAfter(double seconds, std::function<void()> block) override;
    bool event(QEvent* event) override;
  };
  class GlobalQueue final : public DispatchQueue {
   public:
    GlobalQueue(QThreadPool& pool, MainQueue& timers) : pool_(pool), timers_(timers) {}
    void async(std::function<void()> block) override;
    void asyncAfter(double seconds, std::function<void()> block) override;

   private:
    QThreadPool& pool_;
    MainQueue& timers_;
  };

  const std::thread::id mainThread_ = std::this_thread::get_id();
  MainQueue main_;
  QThreadPool pool_;
  GlobalQueue global_{pool_, main_};
};

}  // namespace zephyx
