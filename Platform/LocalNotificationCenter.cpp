#include "Platform/LocalNotificationCenter.h"

#include <utility>

namespace zephyx {

Registration LocalNotificationCenter::addObserver(const std::string& name, const void* object,
                                                  std::function<void()> block) {
  auto observer = std::make_shared<Observer>(Observer{name, object, std::move(block)});
  observers_->push_back(observer);
  return Registration(
      [list = std::weak_ptr<Observers>(observers_), weak = std::weak_ptr<Observer>(observer)] {
        const auto observers = list.lock();
        const auto ended = weak.lock();
        if (!observers || !ended) return;
        ended->isRegistered = false;
        std::erase(*observers, ended);
      });
}

void LocalNotificationCenter::post(const std::string& name, const void* object) {
  const auto observers = *observers_;
  for (const auto& observer : observers) {
    if (!observer->isRegistered || observer->name != name) continue;
    if (observer->object && observer->object != object) continue;
    observer->block();
  }
}

}  // namespace zephyx
