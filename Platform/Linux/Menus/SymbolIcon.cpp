#include "Platform/Linux/Menus/SymbolIcon.h"

#include <QtGui/QIconEngine>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <algorithm>

namespace zephyx {
namespace {

/// Panels are dark as a rule; the outline keeps the glyph readable on a light one.
constexpr QRgb glyphColor = 0xffeeeef1;
constexpr QRgb outlineColor = 0x8c101014;
/// Glyphs are drawn in a square of this side.
constexpr double unit = 24;

/// What is filled, strokes included.
QPainterPath stroked(const QPainterPath& path, double width) {
  QPainterPathStroker stroker;
  stroker.setWidth(width);
  stroker.setCapStyle(Qt::RoundCap);
  stroker.setJoinStyle(Qt::RoundJoin);
  return stroker.createStroke(path);
}

QPainterPath line(double x1, double y1, double x2, double y2) {
  QPainterPath path({x1, y1});
  path.lineTo(x2, y2);
  return path;
}

QPainterPath note() {
  QPainterPath sheet;
  sheet.addRoundedRect(QRectF(4, 3.5, 16, 17), 3, 3);
  QPainterPath lines = line(7.5, 8.5, 16.5, 8.5);
  lines.addPath(line(7.5, 12, 16.5, 12));
  lines.addPath(line(7.5, 15.5, 13, 15.5));
  return stroked(sheet, 2).united(stroked(lines, 1.7));
}

QPainterPath slashedMicrophone() {
  QPainterPath capsule;
  capsule.addRoundedRect(QRectF(9, 2.5, 6, 11.5), 3, 3);
  QPainterPath stand({6, 11});
  stand.arcTo(QRectF(6, 5, 12, 12), 180, 180);
  stand.addPath(line(12, 17, 12, 21));
  stand.addPath(line(8.5, 21, 15.5, 21));
  const auto slash = line(4.5, 3.5, 19.5, 20.5);
  return capsule.united(stroked(stand, 1.7))
      .subtracted(stroked(slash, 4.6))
      .united(stroked(slash, 1.9));
}

QPainterPath dot() {
  QPainterPath path;
  path.addEllipse(QPointF(unit / 2, unit / 2), 5, 5);
  return path;
}

QPainterPath glyph(const std::string& symbol) {
  if (symbol == "note.text") return note();
  if (symbol == "mic.slash.fill") return slashedMicrophone();
  return dot();
}

class SymbolEngine final : public QIconEngine {
 public:
  explicit SymbolEngine(const QPainterPath& glyph) : glyph_(glyph), outline_(stroked(glyph, 1.6)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
    const double side = std::min(rect.width(), rect.height());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2);
    painter->scale(side / unit, side / unit);
    painter->fillPath(outline_, QColor::fromRgba(outlineColor));
    painter->fillPath(glyph_, QColor::fromRgba(glyphColor));
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect({}, size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new SymbolEngine(*this); }

 private:
  QPainterPath glyph_;
  QPainterPath outline_;
};

}  // namespace

QIcon symbolIcon(const std::string& symbol) {
  return QIcon(new SymbolEngine(glyph(symbol)));
}

}  // namespace zephyx
