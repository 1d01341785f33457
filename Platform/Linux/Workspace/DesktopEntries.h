#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QString>
#include <mutex>
#include <optional>
#include <vector>

namespace zephyx {

/// What the installed programs say about themselves.
struct DesktopEntry {
  QString id;    ///< desktop-file id without the ending
  QString name;  ///< in the user's language
  QString icon;  ///< name in the icon theme, or a path
  QString startupWindowClass;
};

/// What a window says about the program that it belongs to.
struct WindowClass {
  QString gtkApplicationId;
  QString kdeDesktopFile;
  QString instance;   ///< first part of WM_CLASS
  QString className;  ///< second part of WM_CLASS
};

/// The desktop entries of the XDG data directories; read when first asked, and again when a
/// directory has changed. Any thread.
class DesktopEntries {
 public:
  /// Reads them, so that the next question does not have to.
  void prefetch();
  std::optional<DesktopEntry> forWindow(const WindowClass& window);
  /// By the name of its executable.
  std::optional<DesktopEntry> forProgram(const QString& program);

 private:
  void refresh();
  void readDirectory(const QString& directory);

  std::mutex mutex_;
  std::vector<DesktopEntry> entries_;
  QHash<QString, QDateTime> directories_;  // every directory that was read, with its age
};

}  // namespace zephyx
