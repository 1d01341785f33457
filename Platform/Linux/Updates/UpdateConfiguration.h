#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <chrono>
#include <optional>

namespace zephyx {

/// How much and how long is waited for.
struct UpdateLimits {
  qint64 feedSize = 1'048'576;
  std::chrono::milliseconds feedTime = std::chrono::seconds(30);
  qint64 downloadSize = 2'147'483'648;
  /// A download that does not bring `progress` bytes in this time has stalled.
  std::chrono::milliseconds patience = std::chrono::seconds(30);
  qint64 progress = 32'768;
};

/// What a build knows about its updates.
struct UpdateConfiguration {
  QUrl feed;
  QByteArray publicKey;  ///< 32 bytes
  QString version;       ///< the build's number, which the feed's versions are compared with
  QString displayVersion;
  QStringList systems;    ///< what a feed may call this system
  QString systemVersion;  ///< of the distribution; empty when it has none
  QString folder;         ///< for downloads
  std::chrono::seconds interval = std::chrono::hours(24);
  std::chrono::milliseconds startDelay = std::chrono::seconds(5);
  /// How often the clock is looked at: a timer of a day would stand still while the machine sleeps.
  std::chrono::milliseconds clockInterval = std::chrono::minutes(10);
  UpdateLimits limits;

  /// Of this build. The variables ZEPHYX_UPDATE_FEED and ZEPHYX_UPDATE_KEY take the place of its
  /// own feed and key, for trying a release out, when the feed lies on this machine.
  static UpdateConfiguration ofBuild();

  /// Why there can be no updates, in a sentence; nothing when there can.
  std::optional<QString> unavailableReason() const;
  /// HTTPS; with a feed on this machine also plain HTTP to it.
  bool mayLoad(const QUrl& url) const;
};

}  // namespace zephyx
