#include "Platform/Linux/Menus/SymbolIcon.h"

#include <QtGui/QIconEngine>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QPainterPathStroker>
#include <algorithm>

#include "Platform/Linux/Symbols/SymbolPath.h"

namespace zephyx {
namespace {

/// Panels are dark as a rule; the outline keeps the glyph readable on a light one.
constexpr QRgb glyphColor = 0xffeeeef1;
constexpr QRgb outlineColor = 0x8c101014;
constexpr double lineWidth = 1.9;
constexpr double outlineWidth = 1.6;

QPainterPath dot() {
  QPainterPath path;
  path.addEllipse(QPointF(symbolSide / 2, symbolSide / 2), 5, 5);
  return path;
}

QPainterPath outlineOf(const QPainterPath& glyph) {
  QPainterPathStroker stroker;
  stroker.setWidth(outlineWidth);
  stroker.setJoinStyle(Qt::RoundJoin);
  return stroker.createStroke(glyph);
}

class SymbolEngine final : public QIconEngine {
 public:
  explicit SymbolEngine(const QPainterPath& glyph) : glyph_(glyph), outline_(outlineOf(glyph)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
    const double side = std::min(rect.width(), rect.height());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2);
    painter->scale(side / symbolSide, side / symbolSide);
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
  const auto glyph = symbolGlyph(QString::fromStdString(symbol), lineWidth);
  return QIcon(new SymbolEngine(glyph.isEmpty() ? dot() : glyph));
}

}  // namespace zephyx
