#include "Platform/Dispatch.h"

#include <utility>

namespace zephyx {

Registration scheduleOnce(DispatchQueue& queue, double seconds, std::function<void()> block) {
  auto item = std::make_shared<std::function<void()>>(std::move(block));
  queue.asyncAfter(seconds, [weakItem = std::weak_ptr(item)] {
    if (const auto alive = weakItem.lock()) (*alive)();
  });
  return Registration([item]() mutable { item.reset(); });
}

}  // namespace zephyx
