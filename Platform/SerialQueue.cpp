#include "Platform/SerialQueue.h"

#include <deque>
#include <mutex>
#include <utility>

namespace zephyx {

/// The blocks that are due, the first of which runs.
class SerialQueue::Blocks : public std::enable_shared_from_this<Blocks> {
 public:
  explicit Blocks(DispatchQueue& concurrent) : concurrent_(concurrent) {}

  void add(std::function<void()> block) {
    {
      const std::lock_guard lock(mutex_);
      blocks_.push_back(std::move(block));
      if (blocks_.size() > 1) return;
    }
    startFirst();
  }

 private:
  void startFirst() {
    concurrent_.async([self = shared_from_this()] { self->runFirst(); });
  }

  void runFirst() {
    std::function<void()> block;
    {
      const std::lock_guard lock(mutex_);
      block = std::move(blocks_.front());
    }
    block();
    block = nullptr;  // what it holds goes before the next one begins
    {
      const std::lock_guard lock(mutex_);
      blocks_.pop_front();
      if (blocks_.empty()) return;
    }
    startFirst();
  }

  DispatchQueue& concurrent_;
  std::mutex mutex_;
  std::deque<std::function<void()>> blocks_;
};

SerialQueue::SerialQueue(DispatchQueue& concurrent)
    : concurrent_(concurrent), blocks_(std::make_shared<Blocks>(concurrent)) {}

SerialQueue::~SerialQueue() = default;

void SerialQueue::async(std::function<void()> block) {
  blocks_->add(std::move(block));
}

void SerialQueue::asyncAfter(double seconds, std::function<void()> block) {
  concurrent_.asyncAfter(seconds,
                         [weakBlocks = std::weak_ptr(blocks_), block = std::move(block)]() mutable {
                           if (const auto blocks = weakBlocks.lock()) blocks->add(std::move(block));
                         });
}

}  // namespace zephyx
