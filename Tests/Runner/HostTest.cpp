#include "Tests/Runner/HostTest.h"

#include "Runner/HotkeyConfig.h"
#include "Runner/HotkeyManager.h"

namespace zephyx {

HostTest::HostTest() : editor(desktop.workspace.start({"org.example.editor", "Editor", nullptr})) {
  desktop.workspace.bringToFront(editor);
}

void HostTest::makeHost() {
  shared = std::make_unique<SharedObjects>(desktop.platform());
  delegate = usageProvider ? std::make_unique<AppDelegate>(desktop.platform(), usageProvider)
                           : std::make_unique<AppDelegate>(desktop.platform());
}

void HostTest::launch() {
  makeHost();
  desktop.application.launch(*delegate);
  desktop.dispatch.settle();
  takeLog();
  mainScreen().takeCalls();
  panelScreen().takeCalls();
  translateScreen().takeCalls();
}

void HostTest::endHost() {
  desktop.application.quitDelegate();
  delegate.reset();
  shared.reset();
  desktop.dispatch.advance(5);  // what the host left behind to run later must do nothing
}

void HostTest::switchToEditor() {
  desktop.workspace.bringToFront(editor);
  desktop.dispatch.settle();
}

void HostTest::pressHotkey(HotkeyID id) {
  const auto config = HotkeyManager::defaults().at(id);
  desktop.keyboard.press(static_cast<std::uint16_t>(config.keyCode),
                         eventModifiers(config.modifiers));
  desktop.dispatch.settle();
}

MenuItem& HostTest::row(const std::string& action) {
  for (const auto& item : statusItem().menu()->items()) {
    if (item->action() == action) return *item;
  }
  throw std::out_of_range(action);
}

void HostTest::reopenMenu() {
  statusItem().cancelTrackingWithoutAnimation();
  statusItem().openMenu();
  desktop.dispatch.settle();
}

void HostTest::TearDown() {
  endHost();
  for (const char* engine : {"default", "clipboard_engine", "translate_engine"}) {
    EXPECT_EQ(desktop.engines.engine(engine), nullptr) << "an engine outlived the host";
  }
  EXPECT_TRUE(desktop.application.windows().empty());
  EXPECT_EQ(desktop.eventMonitors.count(), 0u);
  EXPECT_FALSE(desktop.eventMonitors.hasKeyboard());
  EXPECT_FALSE(desktop.eventTaps.isThere());
  EXPECT_TRUE(desktop.hotKeys.registered().empty());
  EXPECT_EQ(desktop.statusBar.item(), nullptr);
  EXPECT_THAT(desktop.faults.all(), IsEmpty());
  for (const auto& line : takeLog()) {
    const bool ignored =
        std::any_of(ignoredLog_.begin(), ignoredLog_.end(),
                    [&](const std::string& prefix) { return line.starts_with(prefix); });
    EXPECT_TRUE(ignored) << "unexpected log line: " << line;
  }
}

}  // namespace zephyx
