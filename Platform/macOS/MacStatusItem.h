#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "Platform/Menu.h"

namespace zephyx {

class MacMenu;

class MacStatusItem final : public StatusItem {
 public:
  explicit MacStatusItem(double length);
  ~MacStatusItem() override;

  void setImage(const std::string& symbol, const std::string& accessibilityDescription) override;
  void setMenu(std::shared_ptr<Menu> menu) override;
  void cancelTrackingWithoutAnimation() override;
  void performClick() override;

 private:
  NSStatusItem* item_;
  std::unique_ptr<MacMenu> menu_;
};

class MacStatusBar final : public StatusBar {
 public:
  std::shared_ptr<StatusItem> makeStatusItem(double length) override;
};

}  // namespace zephyx
