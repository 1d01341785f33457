#include "Platform/Linux/Input/InputGrab.h"

#include <QtWidgets/QApplication>
#include <chrono>

#include "Platform/Linux/X11.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;

constexpr auto stallLimit = 1'500ms;

InputGrab::Outcome outcomeOf(std::uint8_t status) {
  switch (status) {
    case XCB_GRAB_STATUS_SUCCESS:
      return InputGrab::Outcome::taken;
    case XCB_GRAB_STATUS_ALREADY_GRABBED:
    case XCB_GRAB_STATUS_FROZEN:
      return InputGrab::Outcome::busy;
    default:
      return InputGrab::Outcome::impossible;
  }
}

}  // namespace

InputGrab::InputGrab(xcb_connection_t* connection, Devices devices)
    : connection_(connection), devices_(devices), guard_(stallLimit, [this] { ungrab(); }) {
  const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  const std::uint32_t isUnmanaged = 1;
  window_ = xcb_generate_id(connection_);
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen->root, -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                    &isUnmanaged);
  xcb_map_window(connection_, window_);
}

InputGrab::~InputGrab() {
  letGo();
  xcb_destroy_window(connection_, window_);
  xcb_flush(connection_);
}

InputGrab::Outcome InputGrab::take() {
  auto outcome = devices_.keyboard ? takeKeyboard() : Outcome::taken;
  if (outcome == Outcome::taken && devices_.pointer) outcome = takePointer();
  if (outcome != Outcome::taken) letGo();
  return outcome;
}

InputGrab::Outcome InputGrab::takeKeyboard() {
  if (QApplication::activePopupWidget()) return Outcome::taken;
  const XReply<xcb_grab_keyboard_reply_t> reply(
      xcb_grab_keyboard_reply(connection_,
                              xcb_grab_keyboard(connection_, 0, window_, XCB_CURRENT_TIME,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                              nullptr));
  return reply ? outcomeOf(reply->status) : Outcome::impossible;
}

InputGrab::Outcome InputGrab::takePointer() {
  const XReply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(
      connection_,
      xcb_grab_pointer(connection_, 0, window_, XCB_EVENT_MASK_NO_EVENT, XCB_GRAB_MODE_ASYNC,
                       XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
      nullptr));
  return reply ? outcomeOf(reply->status) : Outcome::impossible;
}

void InputGrab::letGo() {
  // An open menu has taken the keyboard over, and would be deaf without it.
  if (devices_.keyboard && !devices_.pointer && QApplication::activePopupWidget()) return;
  ungrab();
}

void InputGrab::ungrab() const {
  if (devices_.keyboard) xcb_ungrab_keyboard(connection_, XCB_CURRENT_TIME);
  if (devices_.pointer) xcb_ungrab_pointer(connection_, XCB_CURRENT_TIME);
  xcb_flush(connection_);
}

}  // namespace zephyx
