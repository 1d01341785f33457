#include "Platform/Linux/Network/LinuxUrlSession.h"

#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QSslConfiguration>
#include <optional>
#include <utility>

#include "Platform/Linux/Network/TlsConfiguration.h"
#include "Platform/Linux/Network/UrlTransfer.h"

namespace zephyx {

/// The network thread's side: what the requests share.
class LinuxUrlSession::Worker final : public QObject {
 public:
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
    configuration_ = tlsConfiguration();
  }

  std::optional<QNetworkAccessManager> network_;
  QSslConfiguration configuration_;
};

LinuxUrlSession::LinuxUrlSession() : worker_(new Worker) {
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
