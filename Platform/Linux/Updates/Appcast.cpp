#include "Platform/Linux/Updates/Appcast.h"

#include <QtCore/QXmlStreamReader>
#include <utility>

namespace zephyx {
namespace {

constexpr int deepest = 16;
constexpr std::size_t mostItems = 1'000;
constexpr qsizetype longestText = 200'000;
constexpr qsizetype longestVersion = 64;  // that fits into a sentence
constexpr auto formatNamespace = u"http://www.andymatuschak.org/xml-namespaces/sparkle";

/// Walks through a feed once, from one element to the next.
class AppcastReader {
 public:
  AppcastReader(const QByteArray& feed, const QUrl& base) : xml_(feed), base_(base) {}

  std::variant<std::vector<AppcastItem>, UpdateRefusal> read() {
    while (advance()) {
      if (xml_.isStartElement() && isPlain(u"item")) readItem();
    }
    if (xml_.hasError()) {
      auto reason = xml_.errorString();
      if (reason.endsWith(QLatin1Char('.'))) reason.chop(1);
      return UpdateRefusal{QStringLiteral("The update feed cannot be understood: %1.").arg(reason)};
    }
    if (!isFeed_) {
      return UpdateRefusal{QStringLiteral("What the server sent is no update feed.")};
    }
    return std::move(items_);
  }

 private:
  /// Goes to the next piece; false at the end, which an error is too.
  bool advance() {
    xml_.readNext();
    if (xml_.isDTD()) xml_.raiseError(QStringLiteral("it declares a document type"));
    if (xml_.isStartElement() && ++depth_ > deepest) {
      xml_.raiseError(QStringLiteral("its elements are nested too deeply"));
    }
    if (xml_.isEndElement()) --depth_;
    if (depth_ == 1 && xml_.isStartElement()) isFeed_ = isPlain(u"rss");
    return !xml_.atEnd();
  }

  bool isPlain(QStringView name) const {
    return xml_.name() == name && xml_.namespaceUri().isEmpty();
  }
  bool isOfFormat(QStringView name) const {
    return xml_.name() == name && xml_.namespaceUri() == formatNamespace;
  }

  void readItem() {
    if (items_.size() == mostItems) {
      return xml_.raiseError(QStringLiteral("it has too many items"));
    }
    AppcastItem item;
    const int end = depth_ - 1;
    while (advance() && depth_ > end) {
      // Deeper down are the pieces of updates by differences, which look like whole ones.
      if (xml_.isStartElement() && depth_ == end + 2) readMember(item);
    }
    const auto shown = item.displayVersion.size();
    if (shown == 0 || shown > longestVersion) item.displayVersion = item.version;
    items_.push_back(std::move(item));
  }

  void readMember(AppcastItem& item) {
    if (isPlain(u"enclosure")) {
      readEnclosure(item);
    } else if (isPlain(u"description")) {
      item.notesArePlain = attribute(u"format") == QLatin1String("plain-text");
      item.notes = text();
    } else if (isOfFormat(u"releaseNotesLink")) {
      item.notesLink = address(text());
    } else if (isOfFormat(u"version")) {
      item.version = text();
    } else if (isOfFormat(u"shortVersionString")) {
      item.displayVersion = text();
    } else if (isOfFormat(u"channel")) {
      item.channel = text();
    } else if (isOfFormat(u"minimumSystemVersion")) {
      item.minimumSystemVersion = text();
    }
  }

  void readEnclosure(AppcastItem& item) {
    const auto attributes = xml_.attributes();
    item.url = address(attributes.value(QLatin1String("url")).toString());
    item.length = attributes.value(QLatin1String("length")).toLongLong();
    item.signature = QByteArray::fromBase64(attribute(u"edSignature").toLatin1());
    item.system = attribute(u"os").toLower();
    // Older feeds have the versions here.
    if (item.version.isEmpty()) item.version = attribute(u"version");
    if (item.displayVersion.isEmpty()) item.displayVersion = attribute(u"shortVersionString");
  }

  QString attribute(QStringView name) const {
    return xml_.attributes()
        .value(QStringView(formatNamespace).toString(), name.toString())
        .trimmed()
        .toString();
  }

  QUrl address(const QString& text) const {
    return base_.resolved(QUrl(text.trimmed(), QUrl::StrictMode));
  }

  /// The element's own text, up to its end.
  QString text() {
    QString text;
    const int end = depth_ - 1;
    while (advance() && depth_ > end) {
      if (xml_.isCharacters()) text += xml_.text();
      if (text.size() > longestText) xml_.raiseError(QStringLiteral("it has a text without end"));
    }
    return std::move(text).trimmed();
  }

  QXmlStreamReader xml_;
  const QUrl base_;
  std::vector<AppcastItem> items_;
  int depth_ = 0;
  bool isFeed_ = false;
};

}  // namespace

std::variant<std::vector<AppcastItem>, UpdateRefusal> readAppcast(const QByteArray& feed,
                                                                  const QUrl& base) {
  return AppcastReader(feed, base).read();
}

}  // namespace zephyx
