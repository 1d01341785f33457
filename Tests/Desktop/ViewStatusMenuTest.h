#pragma once

#include "Platform/UserDefaults.h"
#include "Runner/AgentUsageMenuItem.h"
#include "Runner/AgentUsageMenuView.h"
#include "Runner/BrightnessMenuItemView.h"
#include "Runner/ExternalDisplayBrightness.h"
#include "Runner/HotkeyManager.h"
#include "Runner/InputLockController.h"
#include "Runner/InputLockMenuItemView.h"
#include "Runner/SharedObjects.h"
#include "Runner/StatusMenu.h"
#include "Runner/SystemMonitorMenuView.h"
#include "Tests/Desktop/ViewTest.h"
#include "Tests/Runner/FakeUsageProvider.h"

namespace zephyx {

/// The whole status menu, with usage of the coding agents as the test says.
class ViewStatusMenuTest : public ViewTest, public MenuDelegate {
 protected:
  ViewStatusMenuTest() { height_ = 1000; }

  void SetUp() override {
    ViewTest::SetUp();
    setenv("TZ", "UTC", 1);
    shared_ = std::make_unique<SharedObjects>(platform());
    defaults().setBoolean("agentUsage.authorized.v2", true);
    HotkeyManager::shared().loadConfigs(defaults());
    monitor_ = std::make_shared<SystemMonitorMenuView>(
        platform().dispatch(), platform().hostStatistics(), platform().temperatureSensors());
    lock_ = std::make_unique<InputLockController>(platform());
    makeMenu();
  }
  void TearDown() override {
    endMenu();
    lock_.reset();
    monitor_.reset();
    shared_.reset();
    ViewTest::TearDown();
  }

  /// As a start of the host makes it.
  void makeMenu() {
    endMenu();
    icon_ = platform().statusBar().makeStatusItem(-2);
    agents_ = std::make_unique<AgentUsageMenuItem>(platform(), provider_, *icon_);
    constexpr auto lockTitle = "Lock Keyboard for Cleaning";
    menu_ = std::make_unique<StatusMenu>(
        *this, HotkeyManager::shared(), defaults(), platform().softwareUpdate(),
        StatusMenu::ViewRows{
            .systemMonitor = MenuItem::withView("System Monitor", monitor_),
            .agentUsage = agents_->item(),
            .brightness = MenuItem::withView(
                BrightnessMenuItemView::title,
                std::make_shared<BrightnessMenuItemView>(ExternalDisplayBrightness::shared())),
            .keyboardLock =
                MenuItem::withView(lockTitle, std::make_shared<InputLockMenuItemView>(
                                                  InputLockTarget::keyboard, lockTitle, *lock_)),
        },
        StatusMenu::Actions{.exportAllNotes = [this] { ++exports_; }});
    icon_->setMenu(menu_->menu());
  }
  void endMenu() {
    icon_.reset();
    menu_.reset();
    agents_.reset();
  }

  void menuNeedsUpdate(Menu&) override { menu_->refreshMicMuteItem(isMuted_); }
  void menuWillOpen(Menu&) override {
    ++openings_;
    monitor_->startMonitoring();
    agents_->menuWillOpen();
  }
  void menuDidClose(Menu&) override { monitor_->stopMonitoring(); }

  UserDefaults& defaults() { return platform().userDefaults(); }
  AgentUsageMenuView& agents() { return agents_->view(); }
  void open() {
    icon_->performClick();
    ASSERT_TRUE(runUntil([&] { return menuIsOpen(); }));
    runFor(std::chrono::milliseconds(50));
  }
  void openWith(const UsageFetchResult& result) {
    open();
    if (!provider_->requests.empty()) provider_->answer(result);
    runFor(std::chrono::milliseconds(50));
  }

  const std::shared_ptr<FakeUsageProvider> provider_ = std::make_shared<FakeUsageProvider>();
  std::unique_ptr<InputLockController> lock_;
  std::shared_ptr<StatusItem> icon_;
  bool isMuted_ = false;
  int exports_ = 0;
  int openings_ = 0;

 private:
  std::unique_ptr<SharedObjects> shared_;
  std::shared_ptr<SystemMonitorMenuView> monitor_;
  std::unique_ptr<AgentUsageMenuItem> agents_;
  std::unique_ptr<StatusMenu> menu_;
};

}  // namespace zephyx
