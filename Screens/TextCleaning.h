#pragma once

#include <QtCore/QString>

namespace zephyx {

/// Without control characters, which could act on a terminal that the text is pasted into. Every
/// kind of line end becomes a line feed; tabs stay.
QString withoutControls(const QString& text);

}  // namespace zephyx
