#include "Screens/ChatServer.h"

#include <QtNetwork/QHostAddress>
#include <algorithm>

namespace zephyx {
namespace {

constexpr auto completionsPath = "/chat/completions";
constexpr qsizetype longestAddress = 2'000;
constexpr qsizetype longestKey = 4'096;

}  // namespace

bool isLoopback(const QUrl& url) {
  const QString host = url.host();
  return host == QLatin1String("localhost") || QHostAddress(host).isLoopback();
}

std::variant<QUrl, QString> chatEndpoint(const QString& address) {
  QString text = address.trimmed();
  if (text.size() > longestAddress) return QStringLiteral("This address is too long.");
  if (!text.contains(QLatin1String("://"))) {
    const QUrl guess("http://" + text);
    text.prepend(isLoopback(guess) ? QLatin1String("http://") : QLatin1String("https://"));
  }
  QUrl url(text, QUrl::StrictMode);
  if (!url.isValid() || url.host().isEmpty())
    return QStringLiteral("This is not an address of a server.");
  if (url.scheme() != QLatin1String("https") && url.scheme() != QLatin1String("http"))
    return QStringLiteral("The address must begin with https://.");
  if (!url.userInfo().isEmpty())
    return QStringLiteral(
        "The address must not hold a name or a password. There is a field for the key.");
  if (url.scheme() == QLatin1String("http") && !isLoopback(url))
    return QStringLiteral("Only a server on this computer may be reached without https.");
  url.setQuery(QString());
  url.setFragment(QString());
  QString path = url.path();
  while (path.endsWith('/')) path.chop(1);
  if (path.isEmpty()) path = QStringLiteral("/v1");
  if (!path.endsWith(QLatin1String(completionsPath))) path += QLatin1String(completionsPath);
  url.setPath(path);
  return url;
}

QString chatOrigin(const QUrl& endpoint) {
  const int usual = endpoint.scheme() == QLatin1String("https") ? 443 : 80;
  return QStringLiteral("%1://%2:%3")
      .arg(endpoint.scheme(), endpoint.host())
      .arg(endpoint.port(usual));
}

bool isUsableKey(const QByteArray& key) {
  return !key.isEmpty() && key.size() <= longestKey &&
         std::all_of(key.begin(), key.end(), [](char c) { return c > ' ' && c <= '~'; });
}

}  // namespace zephyx
