#pragma once

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusObjectPath>
#include <QtGui/QIcon>

namespace zephyx {

/// One size of an icon, as the protocol wants it: 32-bit ARGB in network byte order.
struct StatusIconPixmap {
  int width = 0;
  int height = 0;
  QByteArray bytes;
};
using StatusIconPixmaps = QList<StatusIconPixmap>;

struct StatusToolTip {
  QString iconName;
  StatusIconPixmaps icon;
  QString title;
  QString text;
};

/// The icon as a StatusNotifierItem on the session bus. It exports no menu of its own, so hosts
/// hand clicks back and the host draws the menu. Main thread.
class StatusNotifierItem final : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
  Q_PROPERTY(QString Category READ category)
  Q_PROPERTY(QString Id READ id)
  Q_PROPERTY(QString Title READ title)
  Q_PROPERTY(QString Status READ status)
  Q_PROPERTY(int WindowId READ windowId)
  Q_PROPERTY(QString IconName READ iconName)
  Q_PROPERTY(zephyx::StatusIconPixmaps IconPixmap READ iconPixmap)
  Q_PROPERTY(zephyx::StatusToolTip ToolTip READ toolTip)
  Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
  Q_PROPERTY(QDBusObjectPath Menu READ menu)

 public:
  explicit StatusNotifierItem(QDBusConnection bus);
  ~StatusNotifierItem() override;

  /// Shows the item in the hosts of the watcher that runs now.
  void announce();
  void setIcon(const QIcon& icon, const QString& description);

  QString category() const { return QStringLiteral("ApplicationStatus"); }
  QString id() const { return QStringLiteral("com.zephyx.app"); }
  QString title() const { return description_; }
  QString status() const { return QStringLiteral("Active"); }
  int windowId() const { return 0; }
  QString iconName() const { return {}; }
  StatusIconPixmaps iconPixmap() const { return pixmaps_; }
  StatusToolTip toolTip() const { return {{}, {}, description_, {}}; }
  bool itemIsMenu() const { return false; }
  QDBusObjectPath menu() const { return QDBusObjectPath(QStringLiteral("/NO_DBUSMENU")); }

 public slots:
  // Called by the hosts; coordinates are those of the display.
  void Activate(int x, int y) { emit clicked({x, y}); }
  void ContextMenu(int x, int y) { emit clicked({x, y}); }
  void SecondaryActivate(int, int) {}
  void Scroll(int, const QString&) {}

 signals:
  Q_SCRIPTABLE void NewTitle();
  Q_SCRIPTABLE void NewIcon();
  Q_SCRIPTABLE void NewToolTip();
  void clicked(QPoint position);

 private:
  QDBusConnection bus_;
  QString service_;
  QString description_;
  StatusIconPixmaps pixmaps_;
};

QDBusArgument& operator<<(QDBusArgument& argument, const StatusIconPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusIconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const StatusToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusToolTip& toolTip);

}  // namespace zephyx
