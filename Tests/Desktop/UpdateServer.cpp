#include "Tests/Desktop/UpdateServer.h"

#include <QtCore/QTimer>
#include <QtNetwork/QSslServer>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>
#include <stdexcept>
#include <utility>

namespace zephyx {
namespace {

constexpr auto timeBetweenDrips = std::chrono::milliseconds(50);

QByteArray head(const UpdateServer::File& file) {
  auto head = "HTTP/1.1 " + QByteArray::number(file.status) + " Here\r\nConnection: close\r\n";
  if (!file.location.isEmpty()) head += "Location: " + file.location + "\r\n";
  const auto length = file.drips ? 1'000'000 : file.body.size();
  return head + "Content-Length: " + QByteArray::number(length) + "\r\n\r\n";
}

}  // namespace

class UpdateServer::Listener final : public QObject {
 public:
  explicit Listener(UpdateServer& owner) : owner_(owner) {}

  /// On the thread that it serves on. The port.
  int listen(const std::optional<QSslConfiguration>& tls) {
    if (tls) {
      auto* secure = new QSslServer(this);
      secure->setSslConfiguration(*tls);
      server_ = secure;
    } else {
      server_ = new QTcpServer(this);
    }
    connect(server_, &QTcpServer::pendingConnectionAvailable, this, &Listener::accept);
    server_->listen(QHostAddress::LocalHost);
    return server_->serverPort();
  }

 private:
  void accept() {
    while (auto* client = server_->nextPendingConnection()) {
      connect(client, &QTcpSocket::disconnected, client, &QObject::deleteLater);
      connect(client, &QTcpSocket::readyRead, client, [this, client] { serve(*client); });
      if (client->bytesAvailable() > 0) serve(*client);
    }
  }

  void serve(QTcpSocket& client) {
    if (!client.canReadLine() || client.property("served").toBool()) return;
    client.setProperty("served", true);
    const auto path = client.readLine().split(' ').value(1);
    const auto file = owner_.request(QString::fromUtf8(path.mid(1))).value_or(File{.status = 404});
    client.write(head(file));
    if (file.drips) return drip(client);
    client.write(file.isCutShort ? file.body.left(file.body.size() / 2) : file.body);
    client.disconnectFromHost();
  }

  static void drip(QTcpSocket& client) {
    auto* timer = new QTimer(&client);
    connect(timer, &QTimer::timeout, &client, [&client] { client.write("x"); });
    timer->start(timeBetweenDrips);
  }

  UpdateServer& owner_;
  QTcpServer* server_ = nullptr;
};

UpdateServer::UpdateServer(const std::optional<QSslConfiguration>& tls)
    : listener_(new Listener(*this)) {
  listener_->moveToThread(&thread_);
  QObject::connect(&thread_, &QThread::finished, listener_, &QObject::deleteLater);
  thread_.start();
  int port = 0;
  QMetaObject::invokeMethod(
      listener_, [&] { port = listener_->listen(tls); }, Qt::BlockingQueuedConnection);
  if (port == 0) throw std::runtime_error("no port to listen on");
  origin_ =
      QStringLiteral("%1://127.0.0.1:%2/").arg(QLatin1String(tls ? "https" : "http")).arg(port);
}

UpdateServer::~UpdateServer() {
  thread_.quit();
  thread_.wait();
}

void UpdateServer::set(const QString& name, File file) {
  const QMutexLocker lock(&mutex_);
  files_[name] = std::move(file);
}

QString UpdateServer::address(const QString& name) const {
  return origin_ + name;
}

int UpdateServer::requests(const QString& name) const {
  const QMutexLocker lock(&mutex_);
  const auto found = requests_.find(name);
  return found == requests_.end() ? 0 : found->second;
}

std::optional<UpdateServer::File> UpdateServer::request(const QString& name) {
  const QMutexLocker lock(&mutex_);
  ++requests_[name];
  const auto found = files_.find(name);
  if (found == files_.end()) return std::nullopt;
  return found->second;
}

}  // namespace zephyx
