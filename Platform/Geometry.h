#pragma once

namespace zephyx {

/// Lengths are points; the origin is the bottom-left corner of the main screen, y grows upwards.
struct Point {
  double x = 0;
  double y = 0;
  bool operator==(const Point&) const = default;
};

struct Size {
  double width = 0;
  double height = 0;
  bool operator==(const Size&) const = default;
};

struct Rect {
  Point origin;
  Size size;

  double midX() const { return origin.x + size.width / 2; }
  double midY() const { return origin.y + size.height / 2; }

  /// As the pointer counts in an unflipped coordinate system: the left and top edges belong to the
  /// rectangle, the right and bottom edges do not.
  bool containsPointer(Point p) const {
    return p.x >= origin.x && p.x < origin.x + size.width && p.y > origin.y &&
           p.y <= origin.y + size.height;
  }
  bool operator==(const Rect&) const = default;
};

}  // namespace zephyx
