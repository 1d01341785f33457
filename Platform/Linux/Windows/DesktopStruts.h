#pragma once

#include <QtCore/QRect>
#include <utility>
#include <vector>

namespace zephyx {

class X11Connection;

/// The edges of the display that docks and panels keep for themselves, in pixels.
class DesktopStruts {
 public:
  /// As a window declares it: a width on each side of the display, and the stretch of that side.
  struct Strut {
    int left = 0, right = 0, top = 0, bottom = 0;
    int leftStart = 0, leftEnd = 0, rightStart = 0, rightEnd = 0;
    int topStart = 0, topEnd = 0, bottomStart = 0, bottomEnd = 0;
  };

  DesktopStruts(QSize display, std::vector<Strut> struts)
      : display_(display), struts_(std::move(struts)) {}
  /// Asks every window that the window manager lists; one wait for all answers.
  static DesktopStruts read(X11Connection& connection);

  /// What they leave of `screen`, which is part of the display.
  QRect availableIn(QRect screen) const;

 private:
  QSize display_;
  std::vector<Strut> struts_;
};

}  // namespace zephyx
