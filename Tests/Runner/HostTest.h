#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Runner/AppDelegate.h"
#include "Runner/ClipboardMonitor.h"
#include "Runner/SharedObjects.h"
#include "Tests/Simulated/SimulatedDesktop.h"

namespace zephyx {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Key;
using testing::MatchesRegex;
using testing::Optional;
using testing::SizeIs;
using testing::StartsWith;
using Lines = std::vector<std::string>;

inline const MethodReply nil = Value();

/// The host on a simulated desktop, with an editor in front before it starts. Every test ends with
/// the host's end, which must leave nothing behind: no engine, window, monitor or hot key, no fault
/// of the machine, and no log line that the test has not taken or ignored.
class HostTest : public testing::Test {
 protected:
  HostTest();
  void TearDown() override;

  /// Makes the host without starting it.
  void makeHost();
  /// Starts the host; the main window is shown with the keyboard. Drops the calls of the start.
  void launch();
  void endHost();
  /// The user goes back to the editor; the main window hides.
  void switchToEditor();

  SimulatedWindow& mainWindow() { return *desktop.application.simulatedWindows().at(0); }
  SimulatedWindow& panel() { return *desktop.application.simulatedWindows().at(1); }
  SimulatedScreen& mainScreen() { return desktop.engines.engine("default")->screen(); }
  SimulatedWindow& translatePanel() { return *desktop.application.simulatedWindows().at(2); }
  SimulatedScreen& translateScreen() {
    return desktop.engines.engine("translate_engine")->screen();
  }
  SimulatedScreen& panelScreen() { return desktop.engines.engine("clipboard_engine")->screen(); }
  SimulatedStatusItem& statusItem() { return *desktop.statusBar.item(); }
  /// The row of the status menu with that action.
  MenuItem& row(const std::string& action);
  /// The user closes the menu, if it is open, and opens it.
  void reopenMenu();
  ClipboardMonitor& monitor() { return ClipboardMonitor::shared(); }

  /// The lines since the last call.
  std::vector<std::string> takeLog() { return desktop.systemLog.take(); }
  /// Lines with this beginning do not fail the test.
  void ignoreLog(std::string prefix) { ignoredLog_.push_back(std::move(prefix)); }
  /// Presses the combination of a hotkey of the factory table and lets it take effect.
  void pressHotkey(HotkeyID id);

  SimulatedDesktop desktop;
  std::shared_ptr<SimulatedRunningApplication> editor;
  /// Set before `launch`.
  std::shared_ptr<UsageProvider> usageProvider;
  std::unique_ptr<SharedObjects> shared;
  std::unique_ptr<AppDelegate> delegate;

 private:
  std::vector<std::string> ignoredLog_;
};

inline Bytes bytesOf(const std::string& text) {
  return {text.begin(), text.end()};
}

}  // namespace zephyx
