#include "Platform/Linux/Updates/UpdateConfiguration.h"

#include <QtCore/QStandardPaths>
#include <QtCore/QSysInfo>
#include <QtNetwork/QHostAddress>
#include <algorithm>

#include "Platform/Linux/Updates/UpdateSignature.h"

namespace zephyx {
namespace {

constexpr std::chrono::seconds shortestInterval = std::chrono::hours(1);

bool isLoopback(const QUrl& url) {
  return url.host() == QLatin1String("localhost") || QHostAddress(url.host()).isLoopback();
}

}  // namespace

UpdateConfiguration UpdateConfiguration::ofBuild() {
  UpdateConfiguration build;
  build.feed = QUrl(QStringLiteral(ZEPHYX_UPDATE_FEED), QUrl::StrictMode);
  auto key = QByteArrayLiteral(ZEPHYX_UPDATE_KEY);
  const QUrl local(qEnvironmentVariable("ZEPHYX_UPDATE_FEED"), QUrl::StrictMode);
  if (isLoopback(local)) {
    build.feed = local;
    key = qgetenv("ZEPHYX_UPDATE_KEY");
  }
  build.publicKey = QByteArray::fromBase64(key);
  build.version = QStringLiteral(ZEPHYX_BUILD_NUMBER);
  build.displayVersion = QStringLiteral(ZEPHYX_VERSION);
  build.systems = {QStringLiteral("linux"),
                   QStringLiteral("linux-") + QSysInfo::buildCpuArchitecture()};
  const auto system = QSysInfo::productVersion();
  if (system != QLatin1String("unknown")) build.systemVersion = system;
  build.folder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
                 QStringLiteral("/com.zephyx.app/updates");
  build.interval = std::max(std::chrono::seconds(ZEPHYX_UPDATE_INTERVAL), shortestInterval);
  return build;
}

std::optional<QString> UpdateConfiguration::unavailableReason() const {
  if (feed.isEmpty()) return QStringLiteral("This build of Zephyx has no update feed.");
  if (!feed.isValid() || feed.host().isEmpty() || !mayLoad(feed)) {
    return QStringLiteral("The update feed of this build is no address that begins with https.");
  }
  if (publicKey.size() != publicKeySize) {
    return QStringLiteral("This build of Zephyx has no key to verify updates with.");
  }
  return std::nullopt;
}

bool UpdateConfiguration::mayLoad(const QUrl& url) const {
  if (url.scheme() == QLatin1String("https")) return true;
  return url.scheme() == QLatin1String("http") && isLoopback(url) && isLoopback(feed);
}

}  // namespace zephyx
