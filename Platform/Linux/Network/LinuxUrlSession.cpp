#include "Platform/Linux/Network/LinuxUrlSession.h"

#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QSslCertificate>
#include <QtNetwork/QSslConfiguration>
#include <cstdlib>
#include <optional>
#include <utility>

#include "Platform/Linux/Network/UrlTransfer.h"

namespace zephyx {

/// The network thread's side: what the requests share.
class LinuxUrlSession::Worker final : public QObject {
 public:
  explicit Worker(QString certificates) : certificates_(std::move(certificates)) {}

  ~Worker() override {
    const auto transfers = children();
    qDeleteAll(transfers);  // before what they run on
  }

  void start(const UrlRequest& request, UrlCompletion completion) {
    if (!request.isWellFormed()) return completion(std::nullopt);
    if (!network_) prepare();
    new UrlTransfer(*network_, configuration_, request, std::move(completion), this);
  }

 private:
  void prepare() {
    network_.emplace();
    configuration_ = QSslConfiguration::defaultConfiguration();
    if (!certificates_.isEmpty()) {
      configuration_.addCaCertificates(QSslCertificate::fromPath(certificates_, QSsl::Pem));
    }
  }

  const QString certificates_;
  std::optional<QNetworkAccessManager> network_;
  QSslConfiguration configuration_;
};

LinuxUrlSession::LinuxUrlSession() : worker_(new Worker(qEnvironmentVariable("SSL_CERT_FILE"))) {
  thread_.setObjectName("network");
  worker_->moveToThread(&thread_);
  QObject::connect(&thread_, &QThread::finished, worker_, &QObject::deleteLater);
}

LinuxUrlSession::~LinuxUrlSession() {
  if (!thread_.isRunning()) {
    delete worker_;
    return;
  }
  thread_.quit();
  thread_.wait();
}

void LinuxUrlSession::start(UrlRequest request, UrlCompletion completion) {
  QMetaObject::invokeMethod(
      worker_,
      [worker = worker_, request = std::move(request),
       completion = std::move(completion)]() mutable {
        worker->start(request, std::move(completion));
      },
      Qt::QueuedConnection);
  thread_.start();  // nothing when it runs
}

}  // namespace zephyx
