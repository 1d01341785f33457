#pragma once

#include "Platform/Canvas.h"
#include "Platform/Linux/Views/ViewCoordinates.h"

class QPainter;
class QPalette;

namespace zephyx {

/// A view's canvas on a painter of its widget.
class PainterCanvas final : public Canvas {
 public:
  /// All must outlive the canvas.
  PainterCanvas(QPainter& painter, const ViewCoordinates& coordinates, const QPalette& palette);

  void strokeArc(Point center, double radius, double startDegrees, double sweepDegrees,
                 double lineWidth, Color color) override;
  void fillRoundedRect(Rect rect, double cornerRadius, Color color) override;
  void strokeRoundedRect(Rect rect, double cornerRadius, double lineWidth, Color color) override;
  void drawText(const std::string& text, Rect rect, const TextStyle& style) override;
  void drawSymbol(const SystemSymbol& symbol, Rect rect) override;

 private:
  QPainter& painter_;
  const ViewCoordinates& coordinates_;
  const QPalette& palette_;
};

}  // namespace zephyx
