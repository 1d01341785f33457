#include "Platform/Linux/Menus/TrayIcon.h"

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCall>
#include <QtDBus/QDBusPendingReply>
#include <QtDBus/QDBusServiceWatcher>
#include <QtDBus/QDBusVariant>
#include <QtGui/QCursor>
#include <QtWidgets/QSystemTrayIcon>
#include <utility>

#include "Platform/Linux/Menus/StatusNotifierItem.h"
#include "Platform/Linux/SessionBus.h"
#include "Platform/Linux/Windows/DesktopWatch.h"

namespace zephyx {
namespace {

const QString connectionName = QStringLiteral("com.zephyx.app.tray");
const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

QDBusConnection bus() {
  return QDBusConnection(connectionName);
}

}  // namespace

TrayIcon::TrayIcon(DesktopWatch& watch, std::function<void(QPoint)> onClick)
    : watch_(watch), onClick_(std::move(onClick)) {}

TrayIcon::~TrayIcon() {
  item_.reset();
  QDBusConnection::disconnectFromBus(connectionName);
}

void TrayIcon::start() {
  if (!hasSessionBus()) return useEmbeddedIcon();
  auto connection = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName);
  if (!connection.isConnected()) return useEmbeddedIcon();

  auto* owners = new QDBusServiceWatcher(watcherService, connection,
                                         QDBusServiceWatcher::WatchForOwnerChange, this);
  connect(owners, &QDBusServiceWatcher::serviceOwnerChanged, this, &TrayIcon::findTray);
  for (const auto* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
    connection.connect(watcherService, watcherPath, watcherService, QLatin1String(signal), this,
                       SLOT(findTray()));
  }
  findTray();
}

void TrayIcon::findTray() {
  auto question = QDBusMessage::createMethodCall(watcherService, watcherPath,
                                                 QStringLiteral("org.freedesktop.DBus.Properties"),
                                                 QStringLiteral("Get"));
  question << watcherService << QStringLiteral("IsStatusNotifierHostRegistered");
  question.setAutoStartService(false);
  auto* pending = new QDBusPendingCallWatcher(bus().asyncCall(question), this);
  connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
    const QDBusPendingReply<QDBusVariant> reply = *pending;
    pending->deleteLater();
    if (reply.isValid() && reply.value().variant().toBool()) {
      useNotifierItem();
    } else {
      useEmbeddedIcon();
    }
  });
}

void TrayIcon::useNotifierItem() {
  watch_.setHasNotifierHost(true);
  embedded_.reset();
  if (!item_) {
    item_ = std::make_unique<StatusNotifierItem>(bus());
    item_->setIcon(icon_, description_);
    connect(item_.get(), &StatusNotifierItem::clicked, this,
            [this](QPoint position) { onClick_(position.isNull() ? QCursor::pos() : position); });
  }
  item_->announce();
}

void TrayIcon::useEmbeddedIcon() {
  watch_.setHasNotifierHost(false);
  item_.reset();
  if (embedded_) return;
  // The toolkit decides once whether it embeds icons, when it makes the first: no notifier host
  // runs now, so it does.
  embedded_ = std::make_unique<QSystemTrayIcon>(icon_);
  embedded_->setToolTip(description_);
  connect(embedded_.get(), &QSystemTrayIcon::activated, this,
          [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason != QSystemTrayIcon::Trigger && reason != QSystemTrayIcon::Context) return;
            onClick_(menuPosition().value_or(QCursor::pos()));
          });
  embedded_->show();
}

void TrayIcon::setIcon(const QIcon& icon, const QString& description) {
  icon_ = icon;
  description_ = description;
  if (item_) item_->setIcon(icon_, description_);
  if (embedded_) {
    embedded_->setIcon(icon_);
    embedded_->setToolTip(description_);
  }
}

std::optional<QPoint> TrayIcon::menuPosition() const {
  const QRect place = embedded_ ? embedded_->geometry() : QRect();
  return place.isValid() ? std::optional(place.bottomLeft() + QPoint(0, 1)) : std::nullopt;
}

}  // namespace zephyx
