#pragma once

#include <QtCore/QVariantList>

#include "Channel/Value.h"

namespace zephyx {

/// Rectangles of a picture, as the host is told where to draw the backgrounds behind them.
Value cardFrames(const QVariantList& rectangles, qreal cornerRadius);

}  // namespace zephyx
