#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "Tests/Desktop/HttpsServer.h"

namespace zephyx {

/// A feed with one release on a server, signed with a key pair of its own.
class UpdateFeed {
 public:
  explicit UpdateFeed(HttpsServer& server);

  /// 32 bytes.
  const QByteArray& publicKey() const { return publicKey_; }
  QString address() const { return QString::fromStdString(server_.address() + "/feed.xml"); }
  QByteArray signatureOf(const QByteArray& contents) const;

  /// Offers a release with these contents; the signature is over `signedContents` when there are
  /// any.
  void offer(const QByteArray& version, const QByteArray& contents,
             const QByteArray& signedContents = {});

 private:
  HttpsServer& server_;
  QByteArray publicKey_;
  QByteArray secretKey_;
};

}  // namespace zephyx
