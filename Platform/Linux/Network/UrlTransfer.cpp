#include "Platform/Linux/Network/UrlTransfer.h"

#include <QtCore/QUrl>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <utility>

namespace zephyx {
namespace {

constexpr qsizetype bufferSize = 64 * 1'024;

QNetworkRequest networkRequest(const UrlRequest& request, const QSslConfiguration& configuration) {
  QNetworkRequest result(QUrl(QString::fromStdString(request.url), QUrl::StrictMode));
  result.setSslConfiguration(configuration);
  result.setRawHeader("User-Agent", "Zephyx");
  // A packed answer could grow beyond all bounds.
  result.setRawHeader("Accept-Encoding", "identity");
  for (const auto& [name, value] : request.headers) {
    result.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
  }
  result.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                      QNetworkRequest::ManualRedirectPolicy);
  // Many requests would share one connection, which would stay when a request is ended.
  result.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  for (const auto attribute :
       {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
        QNetworkRequest::AuthenticationReuseAttribute}) {
    result.setAttribute(attribute, QNetworkRequest::Manual);
  }
  return result;
}

/// The toolkit counts statuses such as "not found" among the errors, too.
bool isAnswer(QNetworkReply::NetworkError error) {
  return error == QNetworkReply::NoError ||
         (error >= QNetworkReply::ContentAccessDenied &&
          error != QNetworkReply::ProtocolUnknownError && error != QNetworkReply::ProtocolFailure);
}

}  // namespace

UrlTransfer::UrlTransfer(QNetworkAccessManager& network, const QSslConfiguration& configuration,
                         const UrlRequest& request, UrlCompletion completion, QObject* parent)
    : QObject(parent),
      completion_(std::move(completion)),
      maximumBodySize_(request.maximumBodySize) {
  // The toolkit's own limit begins anew with every byte.
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, [this] { complete(std::nullopt); });
  timer_.start(std::chrono::milliseconds(std::llround(request.timeout * 1'000)));

  reply_ = network.sendCustomRequest(networkRequest(request, configuration),
                                     QByteArray::fromStdString(request.method));
  reply_->setReadBufferSize(bufferSize);
  connect(reply_, &QNetworkReply::readyRead, this, &UrlTransfer::read);
  connect(reply_, &QNetworkReply::finished, this, &UrlTransfer::end);
}

UrlTransfer::~UrlTransfer() {
  if (!reply_) return;
  reply_->disconnect(this);
  reply_->abort();
}

void UrlTransfer::read() {
  while (reply_ && reply_->bytesAvailable() > 0) {
    const QByteArray bytes = reply_->read(bufferSize);
    if (body_.size() + static_cast<std::size_t>(bytes.size()) > maximumBodySize_) {
      return complete(std::nullopt);
    }
    body_.insert(body_.end(), bytes.begin(), bytes.end());
  }
}

void UrlTransfer::end() {
  read();
  if (!reply_) return;
  const int status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  if (status == 0 || !isAnswer(reply_->error())) return complete(std::nullopt);
  complete(UrlResponse{status, std::move(body_)});
}

void UrlTransfer::complete(std::optional<UrlResponse> response) {
  timer_.stop();
  auto* reply = std::exchange(reply_, nullptr);
  reply->disconnect(this);
  reply->abort();
  reply->deleteLater();
  deleteLater();
  completion_(std::move(response));
}

}  // namespace zephyx
