#include "Tests/Desktop/UpdateServer.h"

#include <netinet/in.h>
#include <sys/socket.h>

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

  /// On the thread that it serves on.
  void serveAt(int socket, const std::optional<QSslConfiguration>& tls) {
    if (tls) {
      auto* secure = new QSslServer(this);
      secure->setSslConfiguration(*tls);
      server_ = secure;
    } else {
      server_ = new QTcpServer(this);
    }
    connect(server_, &QTcpServer::pendingConnectionAvailable, this, &Listener::accept);
    server_->setSocketDescriptor(socket);
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

UpdateServer::UpdateServer(std::optional<QSslConfiguration> tls)
    : tls_(std::move(tls)), socket_(socket(AF_INET, SOCK_STREAM, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  if (bind(socket_.get(), generic, length) != 0 || listen(socket_.get(), 8) != 0 ||
      getsockname(socket_.get(), generic, &length) != 0) {
    throw std::runtime_error("no server on the loopback");
  }
  origin_ = QStringLiteral("%1://127.0.0.1:%2/")
                .arg(QLatin1String(tls_ ? "https" : "http"))
                .arg(ntohs(address.sin_port));
}

UpdateServer::~UpdateServer() {
  thread_.quit();
  thread_.wait();
}

void UpdateServer::start() {
  if (thread_.isRunning()) return;
  auto* listener = new Listener(*this);
  listener->moveToThread(&thread_);
  QObject::connect(&thread_, &QThread::finished, listener, &QObject::deleteLater);
  thread_.start();
  QMetaObject::invokeMethod(listener,
                            [this, listener] { listener->serveAt(dup(socket_.get()), tls_); });
}

void UpdateServer::set(const QString& name, File file) {
  {
    const QMutexLocker lock(&mutex_);
    files_[name] = std::move(file);
  }
  start();
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
