#pragma once

#include <QtCore/QString>
#include <QtGui/QPainterPath>

namespace zephyx {

/// Drawings lie in a square of this side.
inline constexpr double symbolSide = 24;

/// The lines of a drawing, for a pen; empty for a name that is not known.
QPainterPath symbolPath(const QString& name);

/// A whole drawing, to be filled: its lines with a pen of this width and round ends, and its solid
/// parts. Empty for a name that is not known.
QPainterPath symbolGlyph(const QString& name, double lineWidth);

}  // namespace zephyx
