#pragma once

#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QSizeF>

#include "Platform/Geometry.h"

namespace zephyx {

/// The one place where a view's coordinates (from the bottom-left corner, or, where lines run from
/// right to left, in a mirror) and its widget's (from the top-left corner) meet.
class ViewCoordinates {
 public:
  ViewCoordinates(Size size, Qt::LayoutDirection direction) : size_(size), direction_(direction) {}

  QRectF fromHost(const Rect& rect) const {
    const double x = isMirrored() ? size_.width - rect.origin.x - rect.size.width : rect.origin.x;
    return {x, size_.height - rect.origin.y - rect.size.height, rect.size.width, rect.size.height};
  }
  QPointF fromHost(Point point) const {
    return {isMirrored() ? size_.width - point.x : point.x, size_.height - point.y};
  }
  Point toHost(QPointF point) const {
    return {isMirrored() ? size_.width - point.x() : point.x(), size_.height - point.y()};
  }
  /// Edges go to the nearest pixel, so that neighbours stay neighbours.
  QRect pixelsFromHost(const Rect& rect) const;

 private:
  bool isMirrored() const { return direction_ == Qt::RightToLeft; }

  Size size_;
  Qt::LayoutDirection direction_;
};

}  // namespace zephyx
