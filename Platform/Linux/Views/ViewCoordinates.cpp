#include "Platform/Linux/Views/ViewCoordinates.h"

#include <QtCore/QRect>

namespace zephyx {

QRect ViewCoordinates::pixelsFromHost(const Rect& rect) const {
  const QRectF exact = fromHost(rect);
  const QPoint topLeft(qRound(exact.left()), qRound(exact.top()));
  return {topLeft,
          QSize(qRound(exact.right()) - topLeft.x(), qRound(exact.bottom()) - topLeft.y())};
}

}  // namespace zephyx
