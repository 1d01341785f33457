#pragma once

#include "Platform/Window.h"

namespace zephyx {

class MacScreens final : public Screens {
 public:
  std::vector<Screen> screens() const override;
  int mainScreenIndex() const override;
  Point mouseLocation() const override;
};

}  // namespace zephyx
