#pragma once

#import <AppKit/AppKit.h>

#include <memory>
#include <vector>

#include "Platform/Menu.h"

@class ZephyxMenuDelegate;
@class ZephyxMenuRow;

namespace zephyx {

/// A menu's data as an NSMenu, which follows the data.
class MacMenu {
 public:
  explicit MacMenu(std::shared_ptr<Menu> menu);
  MacMenu(const MacMenu&) = delete;
  MacMenu& operator=(const MacMenu&) = delete;
  ~MacMenu();

  NSMenu* menu() const { return native_; }

 private:
  void addRow(const std::shared_ptr<MenuItem>& item);
  static void show(const MenuItem& item, NSMenuItem* native);

  const std::shared_ptr<Menu> menu_;
  ZephyxMenuDelegate* delegate_;      // NSMenu does not keep it
  std::vector<ZephyxMenuRow*> rows_;  // nor its items their targets
  NSMenu* native_;
};

}  // namespace zephyx
