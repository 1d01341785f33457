#include "Tests/Desktop/InputTest.h"

#include "Platform/Linux/Input/ToolkitEvents.h"
#include "Platform/Linux/X11.h"

namespace zephyx {

void InputTest::SetUp() {
  desktop_ = std::make_unique<VirtualDesktop>(options_);
  desktop_->enter();
  setLayout({"us"});
  static int argumentCount = 1;
  static char name[] = "zephyx-tests";
  static char* arguments[] = {name, nullptr};
  application_ = std::make_unique<QApplication>(argumentCount, arguments);
  application_->setQuitOnLastWindowClosed(false);
}

void InputTest::TearDown() {
  application_.reset();
  desktop_.reset();
}

void InputTest::pumpAll() {
  auto* connection = toolkitConnection();
  for (int round = 0; round < 3; ++round) {
    const XReply<xcb_get_input_focus_reply_t> answered(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    // The toolkit reads its events on a thread of its own.
    runFor(std::chrono::milliseconds(10));
  }
}

void InputTest::setLayout(const std::vector<std::string>& arguments, unsigned group) {
  if (!arguments.empty()) {
    std::vector<std::string> command{"setxkbmap"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    ASSERT_EQ(desktop_->run(command).status, 0);
  }
  input().lockLayout(group);
}

}  // namespace zephyx
