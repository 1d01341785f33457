#pragma once

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtGui/QIcon>
#include <functional>
#include <memory>
#include <optional>

class QSystemTrayIcon;

namespace zephyx {

class DesktopWatch;
class StatusNotifierItem;

/// An icon in the desktop's tray, in whichever of the two ways the desktop has one: as a
/// StatusNotifierItem while a host for these runs on the session bus, embedded into an X11 tray
/// otherwise. Trays may come, go and change at any time. Main thread.
class TrayIcon final : public QObject {
  Q_OBJECT

 public:
  /// `watch` is told about trays on the session bus. `onClick` gets the place where a menu belongs.
  TrayIcon(DesktopWatch& watch, std::function<void(QPoint)> onClick);
  ~TrayIcon() override;

  /// Looks for the desktop's tray. Takes some milliseconds.
  void start();
  void setIcon(const QIcon& icon, const QString& description);
  /// Where a menu belongs now; nothing where the tray does not tell.
  std::optional<QPoint> menuPosition() const;

 private slots:
  void findTray();

 private:
  void useNotifierItem();
  void useEmbeddedIcon();

  DesktopWatch& watch_;
  std::function<void(QPoint)> onClick_;
  QIcon icon_;
  QString description_;
  std::unique_ptr<StatusNotifierItem> item_;
  std::unique_ptr<QSystemTrayIcon> embedded_;
};

}  // namespace zephyx
