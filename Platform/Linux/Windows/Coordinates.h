#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>

#include "Platform/Geometry.h"

namespace zephyx::coordinates {

/// The one place where the toolkit's coordinates (origin at a top-left corner, y downwards) and the
/// host's (origin at the primary screen's bottom-left corner, y upwards) meet. The result is true
/// for the screens as they are now. Main thread.
Rect toHost(const QRect& rect);
QRect fromHost(const Rect& rect);
Point toHost(const QPoint& point);

}  // namespace zephyx::coordinates
