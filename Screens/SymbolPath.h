#pragma once

#include <QtCore/QString>
#include <QtGui/QPainterPath>

namespace zephyx {

/// The lines of a drawing, on a square of this side; empty for a name that is not known.
inline constexpr double symbolSide = 24;
QPainterPath symbolPath(const QString& name);

}  // namespace zephyx
