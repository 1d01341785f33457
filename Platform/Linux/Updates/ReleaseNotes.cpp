#include "Platform/Linux/Updates/ReleaseNotes.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QUrl>

namespace zephyx {
namespace {

const QSet<QString>& knownTags() {
  static const QSet<QString> tags{"p",  "br", "h1", "h2",     "h3", "h4", "ul",
                                  "ol", "li", "b",  "strong", "i",  "em", "code"};
  return tags;
}

/// An opening tag without what could style, load or run anything.
QString openingTag(const QString& name, const QString& attributes) {
  if (name != QLatin1String("a")) return QLatin1Char('<') + name + QLatin1Char('>');
  static const QRegularExpression link(QStringLiteral("\\bhref\\s*=\\s*[\"']([^\"']*)[\"']"),
                                       QRegularExpression::CaseInsensitiveOption);
  const QUrl url(link.match(attributes).captured(1), QUrl::StrictMode);
  const bool isWebPage = url.scheme() == QLatin1String("https") && !url.host().isEmpty();
  const auto address = isWebPage ? QString::fromUtf8(url.toEncoded()) : QString();
  return QStringLiteral("<a href=\"%1\">").arg(address.toHtmlEscaped());
}

}  // namespace

QString limitedRichText(const QString& html) {
  static const QRegularExpression unread(
      QStringLiteral("<!--.*?(-->|$)|<(script|style|title)\\b.*?(</\\2\\s*>|$)"),
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
  static const QRegularExpression tag(QStringLiteral("<(/?)([a-zA-Z][a-zA-Z0-9]*)([^<>]*)>"));
  const auto source = QString(html).remove(unread);
  QString result;
  qsizetype at = 0;
  const auto keepText = [&](qsizetype end) {
    auto text = source.mid(at, end - at);
    result += text.replace(QLatin1Char('<'), QLatin1String("&lt;"));
  };
  for (auto matches = tag.globalMatch(source); matches.hasNext();) {
    const auto match = matches.next();
    keepText(match.capturedStart());
    at = match.capturedEnd();
    const auto name = match.captured(2).toLower();
    if (name != QLatin1String("a") && !knownTags().contains(name)) continue;
    result += match.capturedLength(1) > 0 ? QStringLiteral("</%1>").arg(name)
                                          : openingTag(name, match.captured(3));
  }
  keepText(source.size());
  return result;
}

}  // namespace zephyx
