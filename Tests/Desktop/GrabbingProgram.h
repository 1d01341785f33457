#pragma once

#include <xcb/xcb.h>

#include "Platform/Linux/X11.h"

namespace zephyx {

/// Another program that takes the keyboard or the mouse for itself, until it ends.
class GrabbingProgram {
 public:
  /// False when somebody else has it.
  bool takeKeyboard() {
    const XReply<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(x11_.get(),
                                xcb_grab_keyboard(x11_.get(), 0, x11_.root(), XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
  }
  bool takePointer() {
    const XReply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(
        x11_.get(),
        xcb_grab_pointer(x11_.get(), 0, x11_.root(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                         XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
        nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
  }
  void giveKeyboardBack() {
    xcb_ungrab_keyboard(x11_.get(), XCB_CURRENT_TIME);
    waitForServer();
  }

 protected:
  void waitForServer() {
    const XReply<xcb_get_input_focus_reply_t> answered(
        xcb_get_input_focus_reply(x11_.get(), xcb_get_input_focus(x11_.get()), nullptr));
  }

  X11Connection x11_;
};

}  // namespace zephyx
