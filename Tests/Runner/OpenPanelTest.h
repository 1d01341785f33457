#pragma once

#include "Runner/ClipboardPanelController.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {

/// The clipboard panel, opened over the editor.
class OpenPanelTest : public HostTest {
 protected:
  void SetUp() override {
    launch();
    switchToEditor();
    pressHotkey(HotkeyID::clipboardPanel);
    takeLog();
    panelScreen().takeCalls();
  }

  std::optional<MethodReply> call(const std::string& method, const Value& arguments = {}) {
    return panelScreen().call(method, arguments);
  }
};

}  // namespace zephyx
