#include "Platform/Linux/Workspace/ExternalPrograms.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QUrl>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>

namespace zephyx {
namespace {

bool startHelper(const QString& url) {
  if (QStandardPaths::findExecutable(QStringLiteral("xdg-open")).isEmpty()) return false;
  QProcess helper;
  helper.setProgram(QStringLiteral("xdg-open"));
  helper.setArguments({url});
  helper.setStandardInputFile(QProcess::nullDevice());
  helper.setStandardOutputFile(QProcess::nullDevice());
  helper.setStandardErrorFile(QProcess::nullDevice());
  return helper.startDetached();
}

void askPortal(const QString& url) {
  auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
                                             QStringLiteral("/org/freedesktop/portal/desktop"),
                                             QStringLiteral("org.freedesktop.portal.OpenURI"),
                                             QStringLiteral("OpenURI"));
  call.setArguments({QString(), url, QVariantMap()});
  QDBusConnection::sessionBus().send(call);
}

}  // namespace

void openWithDesktop(const QString& url) {
  // A URL begins with its scheme, so with a letter: never with the dash of an option.
  if (QUrl(url).scheme().isEmpty()) return;
  if (!startHelper(url)) askPortal(url);
}

void showInFileManager(const QString& path) {
  const auto folder = QUrl::fromLocalFile(QFileInfo(path).absolutePath()).toString();
  auto bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) {
    openWithDesktop(folder);
    return;
  }
  auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
                                             QStringLiteral("/org/freedesktop/FileManager1"),
                                             QStringLiteral("org.freedesktop.FileManager1"),
                                             QStringLiteral("ShowItems"));
  const QStringList items{QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()).toString()};
  call.setArguments({items, QString()});
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), qApp);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                   [folder](QDBusPendingCallWatcher* finished) {
                     const QDBusPendingReply<> reply = *finished;
                     if (reply.isError()) openWithDesktop(folder);
                     finished->deleteLater();
                   });
}

}  // namespace zephyx
