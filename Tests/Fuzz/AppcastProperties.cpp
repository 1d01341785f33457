#include <QtCore/QRegularExpression>

#include "Platform/Linux/Updates/ReleaseNotes.h"
#include "Platform/Linux/Updates/UpdateChoice.h"
#include "Platform/Linux/Updates/UpdateConfiguration.h"
#include "Platform/Linux/Updates/UpdateSignature.h"
#include "Platform/Linux/Updates/VersionOrder.h"
#include "Tests/Fuzz/FuzzTargets.h"

namespace zephyx {
namespace {

const QUrl feedAddress(QStringLiteral("https://updates.example/feed.xml"));

UpdateConfiguration configuration() {
  UpdateConfiguration result;
  result.feed = feedAddress;
  result.version = QStringLiteral("100");
  result.systems = {QStringLiteral("linux"), QStringLiteral("linux-x86_64")};
  result.systemVersion = QStringLiteral("12");
  return result;
}

const char* brokenChoiceProperty(const UpdateChoice& choice) {
  const auto* item = std::get_if<AppcastItem>(&choice);
  if (!item) return nullptr;
  if (!isVersion(item->version) ||
      compareVersions(item->version, u"100") != std::strong_ordering::greater) {
    return "what is chosen is newer";
  }
  if (item->url.scheme() != QLatin1String("https") || item->url.host().isEmpty()) {
    return "what is chosen comes over a secure connection";
  }
  if (item->signature.size() != signatureSize) return "what is chosen is signed";
  if (item->length <= 0 || item->length > UpdateLimits().downloadSize) {
    return "what is chosen has a length within bounds";
  }
  return nullptr;
}

const char* brokenOrderProperty(const std::vector<AppcastItem>& items) {
  for (std::size_t i = 0; i + 2 < items.size() && i < 16; ++i) {
    const QStringView a = items[i].version;
    const QStringView b = items[i + 1].version;
    const QStringView c = items[i + 2].version;
    if (compareVersions(a, b) != 0 <=> compareVersions(b, a)) return "the order has two directions";
    if (compareVersions(a, b) <= 0 && compareVersions(b, c) <= 0 && compareVersions(a, c) > 0) {
      return "the order is one";
    }
  }
  return nullptr;
}

/// What is left once every tag that may be there is gone.
bool isPlainMarkup(QString html) {
  static const QRegularExpression known(
      QStringLiteral("</?(p|br|h[1-4]|[uo]l|li|b|strong|i|em|code)>|</a>|"
                     "<a href=\"(https://[^\"<>]*)?\">"));
  return !html.remove(known).contains(QLatin1Char('<'));
}

}  // namespace

const char* brokenAppcastProperty(BytesView bytes) {
  const QByteArray feed(reinterpret_cast<const char*>(bytes.data()),
                        static_cast<qsizetype>(bytes.size()));
  const auto read = readAppcast(feed, feedAddress);
  const auto* items = std::get_if<std::vector<AppcastItem>>(&read);
  if (!items) {
    const auto& text = std::get<UpdateRefusal>(read).text;
    return text.isEmpty() || text.size() > 500 ? "a refusal is a sentence" : nullptr;
  }
  for (const auto& item : *items) {
    if (item.displayVersion.size() > 64 && item.displayVersion != item.version) {
      return "a version to be read fits into a sentence";
    }
    if (!isPlainMarkup(limitedRichText(item.notes))) return "notes are plain markup";
  }
  if (const char* broken = brokenOrderProperty(*items)) return broken;
  return brokenChoiceProperty(chooseUpdate(*items, configuration()));
}

}  // namespace zephyx
