#include <unistd.h>
#include <xcb/xcb.h>

#include <QtGui/QGuiApplication>
#include <cstdlib>
#include <memory>

#include "Tests/Contract/AlertContract.h"
#include "Tests/Contract/AudioContract.h"
#include "Tests/Contract/DispatchContract.h"
#include "Tests/Contract/DisplaysContract.h"
#include "Tests/Contract/EngineContract.h"
#include "Tests/Contract/EventTapContract.h"
#include "Tests/Contract/KeyboardContract.h"
#include "Tests/Contract/LinuxContractDesktop.h"
#include "Tests/Contract/NetworkContract.h"
#include "Tests/Contract/PasteboardContract.h"
#include "Tests/Contract/SoftwareUpdateContract.h"
#include "Tests/Contract/StatisticsContract.h"
#include "Tests/Contract/StatusBarContract.h"
#include "Tests/Contract/StoreContract.h"
#include "Tests/Contract/WindowContract.h"
#include "Tests/Contract/WorkspaceContract.h"
#include "Tests/Desktop/DesktopWindows.h"
#include "Tests/Desktop/WaitFor.h"

namespace zephyx {
namespace {

const auto linuxDesktop = testing::Values(
    ContractDesktopFactory{"X11", [] { return std::make_unique<LinuxContractDesktop>(); }});

}  // namespace

INSTANTIATE_TEST_SUITE_P(Linux, AlertContract, linuxDesktop, contractRunName);
INSTANTIATE_TEST_SUITE_P(Linux, AudioContract, linuxDesktop, contractRunName);
INSTANTIATE_TEST_SUITE_P(Linux, DispatchContract, linuxDesktop, contractRunName);
INSTANTIATE_TEST_SUITE_P(Linux, DisplaysContract, linuxDesktop, contractRunName);
INSTANTIATE_TEST_SUITE_P(Linux, EngineContract, linuxDesktop, contractRunName);
INSTANTIATE_TEST_SUITE_P(Linux, EventTapContract, linuxDesktop, contractRunName);
INSTANTIATE_TEST_SUITE_P(Linux, KeyboardContract, linuxDesktop, contractRunName);
INSTANTIATE_TEST_SUITE_P(Linux, NetworkContract, linuxDesktop, contractRunName);
INSTANTIATE_TEST_SUITE_P(Linux, PasteboardContract, linuxDesktop, contractRunName);
INSTANTIATE_TEST_SUITE_P(Linux, StatisticsContract, linuxDesktop, contractRunName);
INSTANTIATE_TEST_SUITE_P(Linux, SoftwareUpdateContract, linuxDesktop, contractRunName);
INSTANTIATE_TEST_SUITE_P(Linux, StatusBarContract, linuxDesktop, contractRunName);
INSTANTIATE_TEST_SUITE_P(Linux, StoreContract, linuxDesktop, contractRunName);
INSTANTIATE_TEST_SUITE_P(Linux, WindowContract, linuxDesktop, contractRunName);
INSTANTIATE_TEST_SUITE_P(Linux, WorkspaceContract, linuxDesktop, contractRunName);

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
