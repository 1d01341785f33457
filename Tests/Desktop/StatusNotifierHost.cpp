// The tray of desktops that speak over D-Bus, with no picture: `status_notifier_host FILE` writes
// the bus name of every icon that registers to FILE, one a line.
#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

class StatusNotifierWatcher : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
  Q_PROPERTY(QStringList RegisteredStatusNotifierItems MEMBER items_)
  // Qt looks for this one, by introspection, before it registers an icon.
  Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
  Q_PROPERTY(int ProtocolVersion READ version)

 public:
  explicit StatusNotifierWatcher(const QString& path) : file_(path) {
    file_.open(QIODevice::WriteOnly);
  }
  bool hasHost() const { return true; }
  int version() const { return 0; }

 public slots:
  void RegisterStatusNotifierItem(const QString&, const QDBusMessage& message) {
    items_ << message.service() + "/StatusNotifierItem";
    file_.write(message.service().toUtf8() + '\n');
    file_.flush();
    emit StatusNotifierItemRegistered(items_.last());
  }
  void RegisterStatusNotifierHost(const QString&) {}

 signals:
  void StatusNotifierItemRegistered(const QString& item);
  void StatusNotifierItemUnregistered(const QString& item);
  void StatusNotifierHostRegistered();

 private:
  QFile file_;
  QStringList items_;
};

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  if (argc < 2) return 2;
  StatusNotifierWatcher watcher(QString::fromLocal8Bit(argv[1]));
  auto bus = QDBusConnection::sessionBus();
  if (!bus.registerObject("/StatusNotifierWatcher", &watcher, QDBusConnection::ExportAllContents) ||
      !bus.registerService("org.kde.StatusNotifierWatcher"))
    return 1;
  return QCoreApplication::exec();
}

#include "StatusNotifierHost.moc"
