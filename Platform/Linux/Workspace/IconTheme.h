#pragma once

#include <QtCore/QString>
#include <QtGui/QImage>

namespace zephyx {

/// The application icon of this name, from the icon directories, near 256 pixels where there is a
/// choice; a name may also be a path. Null when there is none. Reads files; any thread.
QImage loadApplicationIcon(const QString& name);

}  // namespace zephyx
