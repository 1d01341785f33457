#pragma once

#include <memory>

#include "Platform/Registration.h"

namespace zephyx {

class Platform;
class View;
class Window;

/// A small dark card above everything else, on the screen under the pointer, that tells the user
/// what has just happened. It has neither the keyboard nor the mouse. Destroyed, it is gone from
/// the screen at once. Main thread.
class HeadsUpPanel {
 public:
  /// The card is as large as `content`, which is drawn in white.
  HeadsUpPanel(Platform& platform, const std::shared_ptr<View>& content, double cornerRadius);
  HeadsUpPanel(const HeadsUpPanel&) = delete;
  HeadsUpPanel& operator=(const HeadsUpPanel&) = delete;
  ~HeadsUpPanel();

  void fadeIn();
  /// And leaves the screen.
  void fadeOut();

 private:
  void place();

  Platform& platform_;
  std::shared_ptr<View> card_;
  std::shared_ptr<Window> window_;
  Registration leaving_;
};

}  // namespace zephyx
