#pragma once

#import <Foundation/Foundation.h>

#include "Platform/Geometry.h"

namespace zephyx {

/// AppKit counts as the host does: points from the bottom-left corner of the main screen.
inline NSRect nsRect(const Rect& rect) {
  return NSMakeRect(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
}

inline NSSize nsSize(const Size& size) {
  return NSMakeSize(size.width, size.height);
}

inline Rect rectOf(NSRect rect) {
  return {{rect.origin.x, rect.origin.y}, {rect.size.width, rect.size.height}};
}

inline Point pointOf(NSPoint point) {
  return {point.x, point.y};
}

}  // namespace zephyx
