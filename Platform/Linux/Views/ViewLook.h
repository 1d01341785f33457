#pragma once

#include <QtCore/QString>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QPainterPath>
#include <QtGui/QPalette>
#include <string>

#include "Platform/TextStyle.h"

class QPainter;

namespace zephyx {

/// The host's colours, fonts and symbols in the toolkit's terms. Main thread.
namespace viewLook {

/// In the appearance of `palette`, which is dark or light.
QColor color(Color color, const QPalette& palette);
QFont font(const Font& font);
/// In the middle of the height; by the direction of the user's language, whatever the text's own
/// is.
Qt::Alignment alignment(TextAlignment alignment, Qt::LayoutDirection direction);
/// `text` if it fits into `width`, else cut, with an ellipsis.
QString fitted(const QString& text, const TextStyle& style, double width);
/// In the middle of a square at the origin with the side `symbolSize`; empty for an unknown name.
QPainterPath symbol(const SystemSymbol& symbol);
double symbolSize(const SystemSymbol& symbol);
/// The style sheet of push buttons.
QString buttonLook(const QPalette& palette);
/// Around something that has the keyboard.
void drawFocusRing(QPainter& painter, const QRectF& around, double cornerRadius,
                   const QPalette& palette);

}  // namespace viewLook

}  // namespace zephyx
