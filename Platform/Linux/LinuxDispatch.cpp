#include "Platform/Linux/LinuxDispatch.h"

#include <sys/resource.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace zephyx {
namespace {

/// Share of the processor that work nobody waits for leaves to the rest, on the system's scale.
constexpr int utilityNiceness = 10;

class BlockEvent final : public QEvent {
 public:
  explicit BlockEvent(std::function<void()> block)
      : QEvent(eventType()), block_(std::move(block)) {}

  static Type eventType() {
    static const auto type = static_cast<Type>(QEvent::registerEventType());
    return type;
  }
  void run() { block_(); }

 private:
  std::function<void()> block_;
};

std::chrono::milliseconds noSoonerThan(double seconds) {
  return std::chrono::milliseconds(static_cast<std::int64_t>(std::ceil(seconds * 1000)));
}

class RepeatingTimer final : public QObject {
 public:
  RepeatingTimer(std::chrono::milliseconds interval, std::function<void()> block)
      : block_(std::move(block)) {
    timer_ = startTimer(interval, interval < shortInterval ? Qt::PreciseTimer : Qt::CoarseTimer);
  }

  /// Deletes the timer, after the block when the block itself asks for it.
  void end() {
    killTimer(timer_);
    if (isFiring_) {
      deleteLater();
    } else {
      delete this;
    }
  }

 private:
  static constexpr std::chrono::milliseconds shortInterval{100};

  void timerEvent(QTimerEvent*) override {
    // A block that runs a loop of its own is not entered again.
    if (isFiring_) return;
    isFiring_ = true;
    block_();
    isFiring_ = false;
  }

  std::function<void()> block_;
  int timer_ = 0;
  bool isFiring_ = false;
};

}  // namespace

void LinuxDispatch::MainQueue::async(std::function<void()> block) {
  QCoreApplication::postEvent(this, new BlockEvent(std::move(block)));
}

void LinuxDispatch::MainQueue::asyncAfter(double seconds, std::function<void()> block) {
  if (seconds <= 0) return async(std::move(block));
  if (QThread::currentThread() == thread()) {
    QTimer::singleShot(noSoonerThan(seconds), Qt::PreciseTimer, this, std::move(block));
    return;
  }
  // Timers belong to the thread that starts them; what the way there costs comes off the delay.
  const auto due = std::chrono::steady_clock::now() + noSoonerThan(seconds);
  async([this, due, block = std::move(block)]() mutable {
    const std::chrono::duration<double> left = due - std::chrono::steady_clock::now();
    asyncAfter(left.count(), std::move(block));
  });
}

bool LinuxDispatch::MainQueue::event(QEvent* event) {
  if (event->type() != BlockEvent::eventType()) return QObject::event(event);
  static_cast<BlockEvent*>(event)->run();
  return true;
}

LinuxDispatch::PoolQueue::PoolQueue(MainQueue& timers, QualityOfService quality)
    : timers_(timers), quality_(quality) {
  // Blocks may wait for other programs, so there are more threads than processors.
  pool_.setMaxThreadCount(std::max(4, QThread::idealThreadCount()));
}

void LinuxDispatch::PoolQueue::async(std::function<void()> block) {
  if (quality_ == QualityOfService::userInitiated) return pool_.start(std::move(block));
  pool_.start([block = std::move(block)] {
    // Of this thread, not of the process; threads that the block starts inherit it.
    setpriority(PRIO_PROCESS, 0, utilityNiceness);
    block();
  });
}

void LinuxDispatch::PoolQueue::asyncAfter(double seconds, std::function<void()> block) {
  timers_.asyncAfter(seconds, [this, block = std::move(block)] { async(block); });
}

LinuxDispatch::LinuxDispatch() = default;

LinuxDispatch::~LinuxDispatch() {
  finishWork();
}

DispatchQueue& LinuxDispatch::serialQueue(const std::string& label, QualityOfService quality) {
  auto& concurrent = quality == QualityOfService::utility ? utility_ : global_;
  return serial_.try_emplace(label, concurrent).first->second;
}

void LinuxDispatch::finishWork() {
  utility_.finish();
  global_.finish();
}

Registration LinuxDispatch::scheduleRepeatingTimer(double interval, std::function<void()> block) {
  auto* timer = new RepeatingTimer(noSoonerThan(interval), std::move(block));
  return Registration([timer] { timer->end(); });
}

double LinuxDispatch::wallClock() const {
  const std::chrono::duration<double> now = std::chrono::system_clock::now().time_since_epoch();
  return now.count();
}

double LinuxDispatch::mediaClock() const {
  const std::chrono::duration<double> now = std::chrono::steady_clock::now().time_since_epoch();
  return now.count();
}

}  // namespace zephyx
