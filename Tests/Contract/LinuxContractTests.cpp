#include <unistd.h>
#include <xcb/xcb.h>

#include <QtGui/QGuiApplication>
#include <cstdlib>

#include "Tests/Contract/ContractSuites.h"
#include "Tests/Contract/LinuxContractDesktop.h"

namespace zephyx {

testing::internal::ParamGenerator<ContractDesktopFactory> contractDesktops() {
  return testing::Values(
      ContractDesktopFactory{"X11", [] { return std::make_unique<LinuxContractDesktop>(); }});
}

// The host's loop stands still while its window gets the keyboard and loses it again.
TEST(LinuxWindowTest, AWindowThatHadTheKeyboardForAMomentIsToldThatItLostIt) {
  LinuxContractDesktop desktop;
  desktop.startOtherApplication();
  auto& application = desktop.platform().application();
  const auto window =
      application.makeWindow({.kind = WindowKind::window, .contentRect = {{100, 100}, {300, 200}}});
  bool hasResigned = false;
  const auto observer = desktop.platform().defaultNotificationCenter().addObserver(
      notification::windowDidResignKey, window->notificationObject(), [&] { hasResigned = true; });
  window->makeKeyAndOrderFront();
  xcb_flush(qApp->nativeInterface<QNativeInterface::QX11Application>()->connection());
  const DesktopWindows witness(std::getenv("DISPLAY"));
  ASSERT_TRUE(waitFor([&] { return witness.processOf(witness.focused()) == getpid(); }));
  desktop.bringOtherApplicationToFront();
  EXPECT_TRUE(desktop.runUntil([&] { return hasResigned; }, 5));
  EXPECT_FALSE(application.isActive());
}

}  // namespace zephyx
