#include "Platform/Linux/Updates/UpdateChoice.h"

#include <QtCore/QLocale>

#include "Platform/Linux/Updates/UpdateConfiguration.h"
#include "Platform/Linux/Updates/UpdateSignature.h"
#include "Platform/Linux/Updates/VersionOrder.h"

namespace zephyx {
namespace {

bool isNewer(const QString& a, const QString& b) {
  return compareVersions(a, b) == std::strong_ordering::greater;
}

bool runsHere(const AppcastItem& item, const UpdateConfiguration& configuration) {
  return item.minimumSystemVersion.isEmpty() || configuration.systemVersion.isEmpty() ||
         !isNewer(item.minimumSystemVersion, configuration.systemVersion);
}

/// What keeps a release from being installed; empty when nothing does.
QString defectOf(const AppcastItem& item, const UpdateConfiguration& configuration) {
  if (item.signature.size() != signatureSize) return QStringLiteral("it is not signed");
  if (!item.url.isValid() || item.url.host().isEmpty()) {
    return QStringLiteral("the feed does not say where it is");
  }
  if (!configuration.mayLoad(item.url)) {
    return QStringLiteral("it would not come over a secure connection");
  }
  if (item.length <= 0) return QStringLiteral("the feed does not say how large it is");
  if (item.length > configuration.limits.downloadSize) {
    return QStringLiteral("%1 is too large").arg(QLocale().formattedDataSize(item.length));
  }
  return {};
}

}  // namespace

UpdateChoice chooseUpdate(const std::vector<AppcastItem>& items,
                          const UpdateConfiguration& configuration) {
  const AppcastItem* newest = nullptr;
  const AppcastItem* newestThatRuns = nullptr;
  bool hasMalformed = false;
  for (const auto& item : items) {
    if (!item.channel.isEmpty() || !configuration.systems.contains(item.system)) continue;
    if (!isVersion(item.version)) {
      hasMalformed = true;
      continue;
    }
    if (!newest || isNewer(item.version, newest->version)) newest = &item;
    if (!runsHere(item, configuration)) continue;
    if (!newestThatRuns || isNewer(item.version, newestThatRuns->version)) newestThatRuns = &item;
  }
  if (!newest && hasMalformed) {
    return UpdateRefusal{QStringLiteral("The update feed names no version that can be compared.")};
  }
  if (!newest) return NoUpdate{};
  if (!isNewer(newest->version, configuration.version)) {
    const bool isOlder = isNewer(configuration.version, newest->version);
    return NoUpdate{isOlder ? newest->displayVersion : QString()};
  }
  if (!newestThatRuns || !isNewer(newestThatRuns->version, configuration.version)) {
    return UpdateRefusal{QStringLiteral("Zephyx %1 needs version %2 of this system or a newer one.")
                             .arg(newest->displayVersion, newest->minimumSystemVersion)};
  }
  const auto defect = defectOf(*newestThatRuns, configuration);
  if (!defect.isEmpty()) {
    return UpdateRefusal{QStringLiteral("Zephyx %1 cannot be installed: %2.")
                             .arg(newestThatRuns->displayVersion, defect)};
  }
  return *newestThatRuns;
}

}  // namespace zephyx
