#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Platform/NotificationCenter.h"

namespace zephyx {

/// A notification centre within this process, for desktops whose notifications the platform posts
/// itself. Main thread.
class LocalNotificationCenter final : public NotificationCenter {
 public:
  [[nodiscard]] Registration addObserver(const std::string& name, const void* object,
                                         std::function<void()> block) override;

  /// Calls the observers that are registered now for `name` and `object`. One that is dropped
  /// during the walk is not called any more; one that is added is called from the next post on.
  void post(const std::string& name, const void* object);

 private:
  struct Observer {
    std::string name;
    const void* object;
    std::function<void()> block;
    bool isRegistered = true;
  };
  using Observers = std::vector<std::shared_ptr<Observer>>;

  std::shared_ptr<Observers> observers_ = std::make_shared<Observers>();
};

}  // namespace zephyx
