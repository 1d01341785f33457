#pragma once

#include <string>

#include "Platform/Color.h"
#include "Platform/Geometry.h"
#include "Platform/TextStyle.h"

namespace zephyx {

/// Where a view draws, in its own coordinates: the origin is its bottom-left corner. Valid during
/// `View::draw` only. Main thread.
class Canvas {
 public:
  virtual ~Canvas() = default;

  /// Part of a circle with round ends. Degrees count from the right end of the horizontal diameter;
  /// a positive sweep goes counter-clockwise. A sweep of 0 draws nothing.
  virtual void strokeArc(Point center, double radius, double startDegrees, double sweepDegrees,
                         double lineWidth, Color color) = 0;
  virtual void fillRoundedRect(Rect rect, double cornerRadius, Color color) = 0;
  /// The middle of the line lies on the edge of `rect`.
  virtual void strokeRoundedRect(Rect rect, double cornerRadius, double lineWidth, Color color) = 0;
  virtual void drawText(const std::string& text, Rect rect, const TextStyle& style) = 0;
  /// In its own size, in the middle of `rect`. A name that the system does not know draws nothing.
  virtual void drawSymbol(const SystemSymbol& symbol, Rect rect) = 0;
};

}  // namespace zephyx
