#include <gtest/gtest.h>

#include "Platform/Linux/Windows/DesktopStruts.h"

namespace zephyx {
namespace {

using Strut = DesktopStruts::Strut;

Strut top(int height, int from, int to) {
  return {.top = height, .topStart = from, .topEnd = to};
}

Strut left(int width, int from, int to) {
  return {.left = width, .leftStart = from, .leftEnd = to};
}

Strut right(int width, int from, int to) {
  return {.right = width, .rightStart = from, .rightEnd = to};
}

Strut bottom(int height, int from, int to) {
  return {.bottom = height, .bottomStart = from, .bottomEnd = to};
}

TEST(DesktopStruts, ADockTakesItsStripFromTheScreenThatItIsOn) {
  constexpr QRect leftScreen(0, 0, 1280, 800);
  constexpr QRect rightScreen(1280, 0, 1920, 1080);
  const std::tuple<const char*, Strut, QRect, QRect> cases[] = {
      {"bar over everything", top(30, 0, 3199), {0, 30, 1280, 770}, {1280, 30, 1920, 1050}},
      {"bar on the right screen", top(30, 1280, 3199), leftScreen, {1280, 30, 1920, 1050}},
      {"dock at the left edge", left(60, 0, 799), {60, 0, 1220, 800}, rightScreen},
      {"dock at the right edge", right(60, 0, 1079), leftScreen, {1280, 0, 1860, 1080}},
      {"dock between the screens", left(1340, 0, 1079), leftScreen, {1340, 0, 1860, 1080}},
      {"bar below the short screen", bottom(320, 0, 1279), {0, 0, 1280, 760}, rightScreen},
      {"bar below the tall screen only", bottom(40, 0, 1279), leftScreen, rightScreen},
  };
  for (const auto& [what, strut, leftOver, rightOver] : cases) {
    SCOPED_TRACE(what);
    const DesktopStruts struts(QSize(3200, 1080), {strut});
    EXPECT_EQ(struts.availableIn(leftScreen), leftOver);
    EXPECT_EQ(struts.availableIn(rightScreen), rightOver);
  }
}

TEST(DesktopStruts, SeveralDocksAddUp) {
  const DesktopStruts struts(QSize(1000, 800),
                             {top(20, 0, 999), top(30, 0, 999), left(50, 0, 799)});
  EXPECT_EQ(struts.availableIn(QRect(0, 0, 1000, 800)), QRect(50, 30, 950, 770));
}

}  // namespace
}  // namespace zephyx
