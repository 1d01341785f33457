#pragma once

#include <memory>

#include "Platform/LifetimeGuard.h"
#include "Platform/Menu.h"
#include "Platform/Registration.h"

namespace zephyx {

class AgentUsageMenuView;
class Platform;
class UsageProvider;

/// The coding agents' row in the status menu. Main thread.
class AgentUsageMenuItem {
 public:
  /// `statusItem`, whose menu gets the row, outlives this object.
  AgentUsageMenuItem(Platform& platform, std::shared_ptr<UsageProvider> provider,
                     StatusItem& statusItem);

  const std::shared_ptr<MenuItem>& item() const { return item_; }
  AgentUsageMenuView& view() const { return *view_; }

  /// Brings the row up to date and asks for fresh figures.
  void menuWillOpen();

 private:
  void reopenMenu();

  Platform& platform_;
  StatusItem& statusItem_;
  std::shared_ptr<AgentUsageMenuView> view_;
  std::shared_ptr<MenuItem> item_;
  Registration reopening_;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
