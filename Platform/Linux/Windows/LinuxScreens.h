#pragma once

#include "Platform/Window.h"

namespace zephyx {

class DesktopWatch;

/// The monitors as the X server has them now.
class LinuxScreens final : public Screens {
 public:
  explicit LinuxScreens(DesktopWatch& watch) : watch_(watch) {}

  std::vector<Screen> screens() const override;
  int mainScreenIndex() const override;
  Point mouseLocation() const override;

 private:
  DesktopWatch& watch_;
};

}  // namespace zephyx
