#pragma once

#import <Foundation/Foundation.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "Platform/LocalNotificationCenter.h"

namespace zephyx {

/// A centre of the system. Objects are identified by the address of the Objective-C object: the
/// `notificationObject()` of windows and panels here is their NSWindow.
class MacNotificationCenter final : public NotificationCenter {
 public:
  explicit MacNotificationCenter(NSNotificationCenter* center);
  MacNotificationCenter(const MacNotificationCenter&) = delete;
  MacNotificationCenter& operator=(const MacNotificationCenter&) = delete;
  ~MacNotificationCenter() override;

  [[nodiscard]] Registration addObserver(const std::string& name, const void* object,
                                         std::function<void()> block) override;

 private:
  void watch(const std::string& name);

  NSNotificationCenter* center_;
  std::shared_ptr<LocalNotificationCenter> observers_;
  std::map<std::string, id<NSObject>> watched_;  ///< by notification name
};

}  // namespace zephyx
