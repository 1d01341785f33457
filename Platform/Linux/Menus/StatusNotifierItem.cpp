#include "Platform/Linux/Menus/StatusNotifierItem.h"

#include <unistd.h>

#include <QtCore/QtEndian>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusMetaType>
#include <QtDBus/QDBusPendingCall>
#include <QtGui/QImage>
#include <QtGui/QPixmap>

namespace zephyx {
namespace {

const QString objectPath = QStringLiteral("/StatusNotifierItem");
constexpr int iconSides[] = {16, 22, 24, 32, 48};

StatusIconPixmap encoded(const QIcon& icon, int side) {
  const auto image =
      icon.pixmap(QSize(side, side), 1.0).toImage().convertToFormat(QImage::Format_ARGB32);
  StatusIconPixmap result{image.width(), image.height(), {}};
  const auto count = static_cast<qsizetype>(image.width()) * image.height();
  result.bytes.resize(count * 4);
  qToBigEndian<quint32>(image.constBits(), count, result.bytes.data());
  return result;
}

}  // namespace

StatusNotifierItem::StatusNotifierItem(QDBusConnection bus) : bus_(std::move(bus)) {
  qDBusRegisterMetaType<StatusIconPixmap>();
  qDBusRegisterMetaType<StatusIconPixmaps>();
  qDBusRegisterMetaType<StatusToolTip>();
  service_ = QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(getpid());
  bus_.registerObject(objectPath, this,
                      QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties |
                          QDBusConnection::ExportScriptableSignals);
  bus_.registerService(service_);
}

StatusNotifierItem::~StatusNotifierItem() {
  bus_.unregisterObject(objectPath);
  bus_.unregisterService(service_);
}

void StatusNotifierItem::announce() {
  auto call = QDBusMessage::createMethodCall(QStringLiteral("org.kde.StatusNotifierWatcher"),
                                             QStringLiteral("/StatusNotifierWatcher"),
                                             QStringLiteral("org.kde.StatusNotifierWatcher"),
                                             QStringLiteral("RegisterStatusNotifierItem"));
  call << service_;
  bus_.asyncCall(call);
}

void StatusNotifierItem::setIcon(const QIcon& icon, const QString& description) {
  pixmaps_.clear();
  for (const int side : iconSides) pixmaps_.append(encoded(icon, side));
  description_ = description;
  emit NewIcon();
  emit NewTitle();
  emit NewToolTip();
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusIconPixmap& pixmap) {
  argument.beginStructure();
  argument << pixmap.width << pixmap.height << pixmap.bytes;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusIconPixmap& pixmap) {
  argument.beginStructure();
  argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
  argument.endStructure();
  return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusToolTip& toolTip) {
  argument.beginStructure();
  argument << toolTip.iconName << toolTip.icon << toolTip.title << toolTip.text;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusToolTip& toolTip) {
  argument.beginStructure();
  argument >> toolTip.iconName >> toolTip.icon >> toolTip.title >> toolTip.text;
  argument.endStructure();
  return argument;
}

}  // namespace zephyx
