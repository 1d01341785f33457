#pragma once

#import <AppKit/AppKit.h>

#include "Platform/Canvas.h"
#include "Platform/macOS/MacViewCoordinates.h"

namespace zephyx {

/// A view's canvas in the graphics context of its native view, during that view's drawing.
class QuartzCanvas final : public Canvas {
 public:
  QuartzCanvas(CGContextRef context, const MacViewCoordinates& coordinates)
      : context_(context), coordinates_(coordinates) {}

  void strokeArc(Point center, double radius, double startDegrees, double sweepDegrees,
                 double lineWidth, Color color) override;
  void fillRoundedRect(Rect rect, double cornerRadius, Color color) override;
  void strokeRoundedRect(Rect rect, double cornerRadius, double lineWidth, Color color) override;
  void drawText(const std::string& text, Rect rect, const TextStyle& style) override;
  void drawSymbol(const SystemSymbol& symbol, Rect rect) override;

 private:
  void addRoundedRect(const Rect& rect, double cornerRadius);

  CGContextRef context_;  ///< the drawing view's
  const MacViewCoordinates& coordinates_;
};

}  // namespace zephyx
