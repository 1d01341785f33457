#include "Runner/AgentUsageMenuItem.h"

#include <utility>

#include "Platform/Dispatch.h"
#include "Platform/Platform.h"
#include "Runner/AgentUsageMenuView.h"

namespace zephyx {
namespace {

constexpr double menuWidth = 320;
constexpr double reopeningDelay = 0.15;

}  // namespace

AgentUsageMenuItem::AgentUsageMenuItem(Platform& platform, std::shared_ptr<UsageProvider> provider,
                                       StatusItem& statusItem)
    : platform_(platform),
      statusItem_(statusItem),
      view_(std::make_shared<AgentUsageMenuView>(Rect{{0, 0}, {menuWidth, 0}}, std::move(provider),
                                                 platform)),
      item_(MenuItem::withView("AI Agents", view_)) {
  view_->onToggleExpand = lifetime_.wrap([this] { reopenMenu(); });
  view_->onWillAsk = lifetime_.wrap([this] { statusItem_.cancelTrackingWithoutAnimation(); });
}

void AgentUsageMenuItem::menuWillOpen() {
  // The user was faster, and another click would close the menu.
  reopening_.reset();
  view_->applyLayoutForState();
  item_->update([this](MenuItem::Properties& p) { p.isHidden = !view_->hasVisibleAgents(); });
  view_->refresh();
}

void AgentUsageMenuItem::reopenMenu() {
  statusItem_.cancelTrackingWithoutAnimation();
  view_->applyLayoutForState();
  reopening_ = scheduleOnce(platform_.dispatch().mainQueue(), reopeningDelay,
                            [this] { statusItem_.performClick(); });
}

}  // namespace zephyx
