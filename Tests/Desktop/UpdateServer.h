#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QMutex>
#include <QtCore/QString>
#include <QtCore/QThread>
#include <QtNetwork/QSslConfiguration>
#include <map>
#include <memory>
#include <optional>

#include "Platform/Linux/FileDescriptor.h"

namespace zephyx {

/// A web server on the loopback with files whose contents and manners the test chooses. Has an
/// address at once; serves from the first file on, on a thread of its own, for which the toolkit's
/// application must exist by then. Ends with this object.
class UpdateServer {
 public:
  struct File {
    QByteArray body;
    int status = 200;
    QByteArray location;      ///< of a redirection
    bool isCutShort = false;  ///< the connection closes after half of it
    bool drips = false;       ///< a byte now and then, without end
  };

  /// HTTPS with a certificate, plain HTTP without.
  explicit UpdateServer(std::optional<QSslConfiguration> tls = {});
  UpdateServer(const UpdateServer&) = delete;
  UpdateServer& operator=(const UpdateServer&) = delete;
  ~UpdateServer();

  /// By name of the file, without a slash.
  void set(const QString& name, File file);
  QString address(const QString& name) const;
  int requests(const QString& name) const;

 private:
  class Listener;

  void start();
  std::optional<File> request(const QString& name);

  const std::optional<QSslConfiguration> tls_;
  FileDescriptor socket_;
  mutable QMutex mutex_;
  std::map<QString, File> files_;
  std::map<QString, int> requests_;
  QString origin_;
  QThread thread_;
};

}  // namespace zephyx
