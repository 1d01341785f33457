#pragma once

#include <QtCore/QObject>
#include <QtCore/QThreadPool>
#include <map>
#include <string>
#include <thread>

#include "Platform/Dispatch.h"
#include "Platform/SerialQueue.h"

namespace zephyx {

/// Queues on the toolkit's main loop and on two pools of threads, one of them of low priority. Made
/// on the main thread.
class LinuxDispatch final : public Dispatch {
 public:
  LinuxDispatch();
  ~LinuxDispatch() override;

  DispatchQueue& mainQueue() override { return main_; }
  DispatchQueue& globalQueue() override { return global_; }
  DispatchQueue& serialQueue(const std::string& label, QualityOfService quality) override;
  bool isMainThread() const override { return std::this_thread::get_id() == mainThread_; }
  [[nodiscard]] Registration scheduleRepeatingTimer(double interval,
                                                    std::function<void()> block) override;
  double wallClock() const override;
  double mediaClock() const override;

  /// Waits until the global queue and the serial ones are empty.
  void finishWork();

 private:
  class MainQueue final : public QObject, public DispatchQueue {
   public:
    void async(std::function<void()> block) override;
    void asyncAfter(double seconds, std::function<void()> block) override;
    bool event(QEvent* event) override;
  };
  class PoolQueue final : public DispatchQueue {
   public:
    PoolQueue(MainQueue& timers, QualityOfService quality);
    void async(std::function<void()> block) override;
    void asyncAfter(double seconds, std::function<void()> block) override;

    void finish() { pool_.waitForDone(); }

   private:
    MainQueue& timers_;
    const QualityOfService quality_;
    QThreadPool pool_;
  };

  const std::thread::id mainThread_ = std::this_thread::get_id();
  MainQueue main_;
  PoolQueue global_{main_, QualityOfService::userInitiated};
  PoolQueue utility_{main_, QualityOfService::utility};
  std::map<std::string, SerialQueue> serial_;  ///< by label
};

}  // namespace zephyx
