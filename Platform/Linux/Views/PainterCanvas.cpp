#include "Platform/Linux/Views/PainterCanvas.h"

#include <QtGui/QPainter>

#include "Platform/Linux/Views/ViewLook.h"

namespace zephyx {
namespace {

/// The painter counts angles in these.
constexpr int unitsPerDegree = 16;

}  // namespace

PainterCanvas::PainterCanvas(QPainter& painter, const ViewCoordinates& coordinates,
                             const QPalette& palette)
    : painter_(painter), coordinates_(coordinates), palette_(palette) {
  painter_.setRenderHint(QPainter::Antialiasing);
}

void PainterCanvas::strokeArc(Point center, double radius, double startDegrees, double sweepDegrees,
                              double lineWidth, Color color) {
  if (sweepDegrees == 0) return;
  painter_.setPen(QPen(viewLook::color(color, palette_), lineWidth, Qt::SolidLine, Qt::RoundCap));
  painter_.setBrush(Qt::NoBrush);
  const QPointF middle = coordinates_.fromHost(center);
  const QRectF circle(middle.x() - radius, middle.y() - radius, 2 * radius, 2 * radius);
  painter_.drawArc(circle, qRound(startDegrees * unitsPerDegree),
                   qRound(sweepDegrees * unitsPerDegree));
}

void PainterCanvas::fillRoundedRect(Rect rect, double cornerRadius, Color color) {
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(viewLook::color(color, palette_));
  painter_.drawRoundedRect(coordinates_.fromHost(rect), cornerRadius, cornerRadius);
}

void PainterCanvas::strokeRoundedRect(Rect rect, double cornerRadius, double lineWidth,
                                      Color color) {
  painter_.setPen(QPen(viewLook::color(color, palette_), lineWidth));
  painter_.setBrush(Qt::NoBrush);
  painter_.drawRoundedRect(coordinates_.fromHost(rect), cornerRadius, cornerRadius);
}

void PainterCanvas::drawText(const std::string& text, Rect rect, const TextStyle& style) {
  painter_.setFont(viewLook::font(style.font));
  painter_.setPen(viewLook::color(style.color, palette_));
  painter_.drawText(
      coordinates_.fromHost(rect),
      int(viewLook::alignment(style.alignment, painter_.layoutDirection())) | Qt::TextSingleLine,
      viewLook::fitted(QString::fromStdString(text), style, rect.size.width));
}

void PainterCanvas::drawSymbol(const SystemSymbol& symbol, Rect rect) {
  const double half = viewLook::symbolSize(symbol) / 2;
  const auto place = coordinates_.fromHost(rect).center() - QPointF(half, half);
  painter_.fillPath(viewLook::symbol(symbol).translated(place),
                    viewLook::color(symbol.tint, palette_));
}

}  // namespace zephyx
