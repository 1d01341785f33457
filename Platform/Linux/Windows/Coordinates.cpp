#include "Platform/Linux/Windows/Coordinates.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <cmath>

namespace zephyx::coordinates {
namespace {

/// The primary screen's bottom-left corner; the bottom row of pixels lies above it.
QPoint origin() {
  const QScreen* primary = QGuiApplication::primaryScreen();
  if (!primary) return {};
  const QRect frame = primary->geometry();
  return {frame.left(), frame.top() + frame.height()};
}

int rounded(double value) {
  return static_cast<int>(std::lround(value));
}

}  // namespace

Rect toHost(const QRect& rect) {
  const QPoint base = origin();
  return {{double(rect.left() - base.x()), double(base.y() - rect.top() - rect.height())},
          {double(rect.width()), double(rect.height())}};
}

QRect fromHost(const Rect& rect) {
  const QPoint base = origin();
  const int width = rounded(rect.size.width);
  const int height = rounded(rect.size.height);
  return {base.x() + rounded(rect.origin.x), base.y() - rounded(rect.origin.y) - height, width,
          height};
}

Point toHost(const QPoint& point) {
  const QPoint base = origin();
  return {double(point.x() - base.x()), double(base.y() - point.y())};
}

}  // namespace zephyx::coordinates
