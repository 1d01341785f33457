#include "Tests/Desktop/InputTest.h"

#include "Platform/Linux/Input/ToolkitEvents.h"
#include "Platform/Linux/X11.h"

// A member of this C header is called `explicit`.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

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

bool InputTest::pumpUntil(const std::function<bool()>& condition,
                          std::chrono::milliseconds deadline) {
  return waitFor(
      [&] {
        QCoreApplication::processEvents();
        return condition();
      },
      deadline);
}

void InputTest::pumpFor(std::chrono::milliseconds duration) {
  (void)pumpUntil([] { return false; }, duration);
}

void InputTest::pumpAll() {
  auto* connection = toolkitConnection();
  for (int round = 0; round < 3; ++round) {
    const XReply<xcb_get_input_focus_reply_t> answered(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    // The toolkit reads its events on a thread of its own.
    pumpFor(std::chrono::milliseconds(10));
  }
}

void InputTest::setLayout(const std::vector<std::string>& arguments, unsigned group) {
  if (!arguments.empty()) {
    std::vector<std::string> command{"setxkbmap"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    ASSERT_EQ(desktop_->run(command).status, 0);
  }
  X11Connection x11;
  const XReply<xcb_xkb_use_extension_reply_t> used(
      xcb_xkb_use_extension_reply(x11.get(), xcb_xkb_use_extension(x11.get(), 1, 0), nullptr));
  xcb_xkb_latch_lock_state(x11.get(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1,
                           static_cast<std::uint8_t>(group), 0, 0, 0);
  const XReply<xcb_get_input_focus_reply_t> done(
      xcb_get_input_focus_reply(x11.get(), xcb_get_input_focus(x11.get()), nullptr));
}

}  // namespace zephyx
