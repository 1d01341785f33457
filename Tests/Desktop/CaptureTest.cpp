#include "Tests/Desktop/CaptureTest.h"

#include "Platform/HotKeys.h"
#include "Runner/HotkeyManager.h"

namespace zephyx {

void CaptureTest::SetUp() {
  desktop_ = std::make_unique<VirtualDesktop>(options_);
  desktop_->enter();
  desktop_->run({"setxkbmap", "us"});
  static char name[] = "zephyx-tests";
  static char* arguments[] = {name, nullptr};
  platform_ = makePlatform(1, arguments);
  ASSERT_TRUE(platform_);
  shared_ = std::make_unique<SharedObjects>(*platform_);

  auto& hotkeys = HotkeyManager::shared();
  hotkeys.loadConfigs(platform_->userDefaults());
  handler_ = platform_->hotKeys().setPressedHandler([this](HotKeyIdentity identity) {
    const auto id = hotkeyId(identity.id);
    ASSERT_TRUE(id);
    fired_.push_back(*id);
  });
  hotkeys.registerAll();
}

void CaptureTest::TearDown() {
  handler_.reset();
  shared_.reset();
  platform_.reset();
  desktop_.reset();
}

}  // namespace zephyx
