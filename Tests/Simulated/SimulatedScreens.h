#pragma once

#include "Platform/Window.h"

namespace zephyx {

/// One screen of 1440 x 900 with a menu bar of 25 points at first, the pointer in its middle.
class SimulatedScreens final : public Screens {
 public:
  std::vector<Screen> screens() const override { return screens_; }
  int mainScreenIndex() const override { return mainScreenIndex_; }
  Point mouseLocation() const override { return mouseLocation_; }

  void setScreens(std::vector<Screen> screens, int mainScreenIndex) {
    screens_ = std::move(screens);
    mainScreenIndex_ = mainScreenIndex;
  }
  void movePointer(Point location) { mouseLocation_ = location; }

 private:
  std::vector<Screen> screens_ = {{{{0, 0}, {1440, 900}}, {{0, 0}, {1440, 875}}}};
  int mainScreenIndex_ = 0;
  Point mouseLocation_{720, 450};
};

}  // namespace zephyx
