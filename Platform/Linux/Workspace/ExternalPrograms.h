#pragma once

#include <QtCore/QString>

namespace zephyx {

/// Hands a URL to the user's program for it; returns at once. Only whole URLs: anything that the
/// helper could take for an option or a local name is ignored. Main thread.
void openWithDesktop(const QString& url);

/// Shows a file, selected, in the file manager; where there is none that can do it, opens the
/// file's folder. Returns at once. Main thread.
void showInFileManager(const QString& path);

}  // namespace zephyx
