#include "Tests/Desktop/HttpsServer.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtNetwork/QSslConfiguration>
#include <QtNetwork/QSslKey>
#include <QtNetwork/QSslServer>
#include <QtNetwork/QSslSocket>
#include <algorithm>
#include <atomic>
#include <deque>
#include <map>
#include <mutex>
#include <stdexcept>
#include <utility>

namespace zephyx {
namespace {

constexpr qint64 backlog = 64 * 1'024;  // bytes written ahead of the reader

void makeCertificate(const std::filesystem::path& certificate, const std::filesystem::path& key) {
  QProcess openssl;
  openssl.start("openssl",
                {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
                 "-nodes", "-days", "2", "-subj", "/CN=Zephyx test", "-addext",
                 "subjectAltName=IP:127.0.0.1", "-keyout", QString::fromStdString(key.string()),
                 "-out", QString::fromStdString(certificate.string())});
  if (!openssl.waitForFinished() || openssl.exitCode() != 0) {
    throw std::runtime_error("openssl makes no certificate: " +
                             openssl.readAllStandardError().toStdString());
  }
}

QByteArray contents(const std::filesystem::path& path) {
  QFile file(QString::fromStdString(path.string()));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read " + path.string());
  return file.readAll();
}

std::unique_ptr<QTcpServer> makeServer(const std::filesystem::path& folder,
                                       HttpsServer::Protocol protocol) {
  if (protocol == HttpsServer::Protocol::http) return std::make_unique<QTcpServer>();
  const auto certificate = HttpsServer::certificateIn(folder);
  const auto key = folder / "web-server.key";
  makeCertificate(certificate, key);
  auto configuration = QSslConfiguration::defaultConfiguration();
  configuration.setLocalCertificate(QSslCertificate(contents(certificate)));
  configuration.setPrivateKey(QSslKey(contents(key), QSsl::Ec));
  auto server = std::make_unique<QSslServer>();
  server->setSslConfiguration(configuration);
  return server;
}

UrlRequest parseRequest(const QByteArray& head) {
  const auto lines = head.trimmed().split('\n');
  const auto words = lines.first().split(' ');
  UrlRequest request{.url = words.value(1).toStdString(), .method = words.first().toStdString()};
  for (qsizetype index = 1; index < lines.size(); ++index) {
    const auto colon = lines[index].indexOf(':');
    request.headers.emplace_back(lines[index].left(colon).toStdString(),
                                 lines[index].mid(colon + 1).trimmed().toStdString());
  }
  return request;
}

qint64 bodySize(const UrlRequest& request) {
  for (const auto& [name, value] : request.headers) {
    if (QByteArray::fromStdString(name).toLower() == "content-length") return std::stoll(value);
  }
  return 0;
}

/// Threads of the toolkit need one.
std::unique_ptr<QCoreApplication> applicationWhereThereIsNone() {
  static int count = 1;
  static char name[] = "web-server";
  static char* arguments[] = {name, nullptr};
  return QCoreApplication::instance() ? nullptr
                                      : std::make_unique<QCoreApplication>(count, arguments);
}

}  // namespace

/// Everything but the replies and records, which are locked, belongs to the thread.
class HttpsServer::Listener {
 public:
  Listener(const std::filesystem::path& folder, Protocol protocol)
      : server_(makeServer(folder, protocol)) {
    if (!server_->listen(QHostAddress::LocalHost)) throw std::runtime_error("cannot listen");
    port = server_->serverPort();
    scheme = protocol == Protocol::https ? "https" : "http";
    QObject::connect(server_.get(), &QTcpServer::pendingConnectionAvailable, server_.get(), [this] {
      while (auto* client = server_->nextPendingConnection()) accept(client);
    });
    server_->moveToThread(&thread_);
    thread_.start();
  }
  ~Listener() {
    // Connections, too, end on their own thread.
    QMetaObject::invokeMethod(
        server_.get(), [this] { server_.reset(); }, Qt::BlockingQueuedConnection);
    thread_.quit();
    thread_.wait();
  }

  void letGoOfApplication() {
    // Its loop may have to begin yet, which takes an application, too.
    QMetaObject::invokeMethod(
        server_.get(), [] {}, Qt::BlockingQueuedConnection);
    application_.reset();
  }

  int port = 0;
  std::string scheme;
  std::atomic<std::size_t> sentBytes{0};
  std::atomic<int> answered{0}, abandoned{0};
  std::mutex mutex;
  std::deque<HttpsReply> replies{HttpsReply{}};  ///< the first one was given, or nothing is to come
  std::map<std::string, HttpsReply> files;
  std::vector<UrlRequest> requests;
  std::string lastBody;

 private:
  /// An answer on its way out.
  struct Outgoing {
    HttpsReply reply;
    std::size_t sent = 0;
    bool hasEnded = false;

    std::size_t size() const { return reply.body.size() + reply.padding; }
    QByteArray take(std::size_t count) {
      QByteArray bytes;
      for (const auto end = std::min(size(), sent + count); sent < end; ++sent) {
        bytes += sent < reply.body.size() ? reply.body[sent] : 'x';
      }
      return bytes;
    }
  };

  void accept(QTcpSocket* client) {
    QObject::connect(client, &QTcpSocket::readyRead, client,
                     [this, client, head = QByteArray()]() mutable {
                       head += client->readAll();
                       const auto end = head.indexOf("\r\n\r\n");
                       if (end < 0) return;
                       auto request = parseRequest(head.left(end));
                       if (head.size() < end + 4 + bodySize(request)) return;
                       {
                         const std::lock_guard lock(mutex);
                         lastBody = std::exchange(head, {}).mid(end + 4).toStdString();
                       }
                       answer(client, std::move(request));
                     });
    QObject::connect(client, &QTcpSocket::disconnected, client, &QObject::deleteLater);
  }

  void answer(QTcpSocket* client, UrlRequest request) {
    auto outgoing = std::make_shared<Outgoing>();
    {
      const std::lock_guard lock(mutex);
      requests.push_back(request);
      if (files.empty()) {
        if (replies.size() > 1) replies.pop_front();
        outgoing->reply = replies.front();
      } else {
        const auto file = files.find(request.url);
        outgoing->reply = file == files.end() ? HttpsReply{.status = 404} : file->second;
      }
    }
    const auto& reply = outgoing->reply;
    const int promised = reply.cutsOff || reply.hangs;
    if (reply.hangs) {
      QObject::connect(client, &QTcpSocket::disconnected, client, [this] { ++abandoned; });
    }
    client->write(QByteArray::fromStdString(
        "HTTP/1.1 " + std::to_string(reply.status) + " Status\r\nContent-Length: " +
        std::to_string(outgoing->size() + static_cast<std::size_t>(promised)) + "\r\n" +
        reply.headers + "\r\n"));
    if (reply.interval.count() > 0) {
      auto* timer = new QTimer(client);
      QObject::connect(timer, &QTimer::timeout, client, [this, client, timer, outgoing] {
        client->write(outgoing->take(1));
        ++sentBytes;
        if (outgoing->sent == outgoing->size()) timer->deleteLater();
      });
      timer->start(reply.interval);
      return;
    }
    auto* pump = new QObject(client);
    const auto feed = [this, client, pump, outgoing] {
      while (outgoing->sent < outgoing->size() && waiting(*client) < backlog) {
        sentBytes += static_cast<std::size_t>(client->write(outgoing->take(backlog)));
      }
      if (outgoing->sent < outgoing->size() || std::exchange(outgoing->hasEnded, true)) return;
      if (outgoing->reply.cutsOff) client->disconnectFromHost();
      if (!outgoing->reply.hangs) ++answered;
      pump->deleteLater();
    };
    QObject::connect(client, &QTcpSocket::bytesWritten, pump, feed);
    if (auto* secure = qobject_cast<QSslSocket*>(client)) {
      QObject::connect(secure, &QSslSocket::encryptedBytesWritten, pump, feed);
    }
    feed();
  }

  static qint64 waiting(const QTcpSocket& client) {
    const auto* secure = qobject_cast<const QSslSocket*>(&client);
    return client.bytesToWrite() + (secure ? secure->encryptedBytesToWrite() : 0);
  }

  std::unique_ptr<QCoreApplication> application_ = applicationWhereThereIsNone();
  QThread thread_;
  std::unique_ptr<QTcpServer> server_;
};

HttpsServer::HttpsServer(const std::filesystem::path& folder, Protocol protocol)
    : listener_(std::make_unique<Listener>(folder, protocol)) {}

HttpsServer::~HttpsServer() = default;

void HttpsServer::letGoOfApplication() {
  listener_->letGoOfApplication();
}

std::filesystem::path HttpsServer::certificateIn(const std::filesystem::path& folder) {
  return folder / "web-server.pem";
}

std::string HttpsServer::address() const {
  return listener_->scheme + "://127.0.0.1:" + std::to_string(listener_->port);
}

int HttpsServer::port() const {
  return listener_->port;
}

void HttpsServer::reply(HttpsReply reply) {
  const std::lock_guard lock(listener_->mutex);
  listener_->replies.push_back(std::move(reply));
}

void HttpsServer::set(const std::string& path, HttpsReply reply) {
  const std::lock_guard lock(listener_->mutex);
  listener_->files[path] = std::move(reply);
}

int HttpsServer::answered() const {
  return listener_->answered;
}

int HttpsServer::abandoned() const {
  return listener_->abandoned;
}

int HttpsServer::requests(const std::string& path) const {
  return static_cast<int>(std::ranges::count(requests(), path, &UrlRequest::url));
}

std::vector<UrlRequest> HttpsServer::requests() const {
  const std::lock_guard lock(listener_->mutex);
  return listener_->requests;
}

std::string HttpsServer::lastBody() const {
  const std::lock_guard lock(listener_->mutex);
  return listener_->lastBody;
}

std::size_t HttpsServer::sentBytes() const {
  return listener_->sentBytes;
}

}  // namespace zephyx
