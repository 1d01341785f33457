#include "Screens/Symbol.h"

#include <QtGui/QPainter>
#include <algorithm>

#include "Platform/Linux/Symbols/SymbolPath.h"

namespace zephyx {
namespace {

constexpr double lineWidth = 1.7;

}  // namespace

Symbol::Symbol(QQuickItem* parent) : QQuickPaintedItem(parent) {
  setAntialiasing(true);
  setImplicitSize(18, 18);
}

void Symbol::setName(const QString& name) {
  if (name == name_) return;
  name_ = name;
  update();
  emit nameChanged();
}

void Symbol::setColor(const QColor& color) {
  if (color == color_) return;
  color_ = color;
  update();
  emit colorChanged();
}

void Symbol::paint(QPainter* painter) {
  const double scale = std::min(width(), height()) / symbolSide;
  painter->translate(width() / 2, height() / 2);
  painter->scale(scale, scale);
  painter->translate(-symbolSide / 2, -symbolSide / 2);
  painter->setPen(QPen(color_, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter->drawPath(symbolPath(name_));
}

}  // namespace zephyx
