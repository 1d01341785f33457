#pragma once

#include <xcb/xcb.h>

namespace zephyx {

/// Tells the repeats of a key that stays down from presses: they look like a release and a press at
/// the same moment.
class KeyRepeat {
 public:
  void released(const xcb_key_release_event_t& release) {
    key_ = release.detail;
    time_ = release.time;
  }
  bool isRepeat(const xcb_key_press_event_t& press) const {
    return press.detail == key_ && press.time == time_;
  }

 private:
  xcb_keycode_t key_ = 0;
  xcb_timestamp_t time_ = XCB_CURRENT_TIME;
};

}  // namespace zephyx
