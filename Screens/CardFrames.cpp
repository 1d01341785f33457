#include "Screens/CardFrames.h"

#include <QtCore/QRectF>
#include <utility>

namespace zephyx {

Value cardFrames(const QVariantList& rectangles, qreal cornerRadius) {
  List rects;
  for (const QVariant& variant : rectangles) {
    const QRectF rectangle = variant.toRectF();
    rects.push_back(Map{{"x", rectangle.x()},
                        {"y", rectangle.y()},
                        {"w", rectangle.width()},
                        {"h", rectangle.height()}});
  }
  return Map{{"rects", std::move(rects)}, {"cornerRadius", cornerRadius}};
}

}  // namespace zephyx
