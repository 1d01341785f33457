#include "Platform/Linux/Input/SessionPauses.h"

#include <QtDBus/QDBusConnection>
#include <utility>

namespace zephyx {
namespace {

const QString connectionName = QStringLiteral("com.zephyx.app.pauses");
const QString service = QStringLiteral("org.freedesktop.login1");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");
const QString managerInterface = QStringLiteral("org.freedesktop.login1.Manager");
const QString sessionInterface = QStringLiteral("org.freedesktop.login1.Session");

}  // namespace

SessionPauses::SessionPauses(std::function<void()> onPause) : onPause_(std::move(onPause)) {
  auto bus = QDBusConnection::connectToBus(QDBusConnection::SystemBus, connectionName);
  if (!bus.isConnected()) return;
  bus.connect(service, managerPath, managerInterface, QStringLiteral("PrepareForSleep"), this,
              SLOT(prepareForSleep(bool)));
  // Of whichever session: which one is ours is not always known, and several are rare.
  bus.connect(service, QString(), sessionInterface, QStringLiteral("Lock"), this, SLOT(lock()));
}

SessionPauses::~SessionPauses() {
  QDBusConnection::disconnectFromBus(connectionName);
}

void SessionPauses::prepareForSleep(bool isBeginning) {
  if (isBeginning) onPause_();
}

void SessionPauses::lock() {
  onPause_();
}

}  // namespace zephyx
