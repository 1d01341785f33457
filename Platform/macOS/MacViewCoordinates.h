#pragma once

#import <AppKit/AppKit.h>

#include "Platform/Geometry.h"

namespace zephyx {

/// The one place where a view's coordinates and its native view's meet. Both count from the
/// bottom-left corner; where the user interface runs from right to left, x is mirrored.
class MacViewCoordinates {
 public:
  MacViewCoordinates(Size size, bool isMirrored) : size_(size), isMirrored_(isMirrored) {}

  static bool isMirrored(NSView* view) {
    return view.userInterfaceLayoutDirection == NSUserInterfaceLayoutDirectionRightToLeft;
  }

  bool isMirrored() const { return isMirrored_; }
  NSRect fromHost(const Rect& rect) const {
    const double x = isMirrored_ ? size_.width - rect.origin.x - rect.size.width : rect.origin.x;
    return NSMakeRect(x, rect.origin.y, rect.size.width, rect.size.height);
  }
  NSPoint fromHost(Point point) const {
    return NSMakePoint(isMirrored_ ? size_.width - point.x : point.x, point.y);
  }
  Point toHost(NSPoint point) const {
    return {isMirrored_ ? size_.width - point.x : point.x, point.y};
  }

 private:
  Size size_;
  bool isMirrored_;
};

}  // namespace zephyx
