#include "Platform/Linux/Updates/UpdateTransfer.h"

#include <QtCore/QUrl>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>
#include <utility>

#include "Platform/Linux/Network/TlsConfiguration.h"
#include "Platform/Linux/Updates/UpdateConfiguration.h"

namespace zephyx {
namespace {

constexpr qsizetype bufferSize = 64 * 1'024;
constexpr int mostRedirections = 5;

QNetworkRequest makeRequest(const QUrl& url) {
  QNetworkRequest request(url);
  request.setSslConfiguration(tlsConfiguration());
  request.setRawHeader("User-Agent", "Zephyx");
  // A packed answer could grow beyond all bounds.
  request.setRawHeader("Accept-Encoding", "identity");
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                       QNetworkRequest::UserVerifiedRedirectPolicy);
  request.setMaximumRedirectsAllowed(mostRedirections);
  request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  for (const auto attribute :
       {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
        QNetworkRequest::AuthenticationReuseAttribute}) {
    request.setAttribute(attribute, QNetworkRequest::Manual);
  }
  return request;
}

}  // namespace

UpdateTransfer::UpdateTransfer(QNetworkAccessManager& network,
                               const UpdateConfiguration& configuration, const QUrl& url,
                               Bounds bounds, Sink sink, Completion completion)
    : configuration_(configuration),
      bounds_(bounds),
      sink_(std::move(sink)),
      completion_(std::move(completion)) {
  // The toolkit's own limit begins anew with every byte.
  connect(&patience_, &QTimer::timeout, this, &UpdateTransfer::checkProgress);
  patience_.start(bounds.patience);
  reply_ = network.get(makeRequest(url));
  reply_->setReadBufferSize(bufferSize);
  connect(reply_, &QNetworkReply::redirected, this, &UpdateTransfer::follow);
  connect(reply_, &QNetworkReply::readyRead, this, &UpdateTransfer::read);
  connect(reply_, &QNetworkReply::finished, this, &UpdateTransfer::end);
}

UpdateTransfer::~UpdateTransfer() {
  if (!reply_) return;
  reply_->disconnect(this);
  reply_->abort();
  reply_->deleteLater();
}

void UpdateTransfer::follow(const QUrl& url) {
  if (configuration_.mayLoad(url)) {
    emit reply_->redirectAllowed();
  } else {
    complete(QStringLiteral("it was moved to where there is no secure connection"));
  }
}

void UpdateTransfer::read() {
  while (reply_ && reply_->bytesAvailable() > 0) {
    const auto bytes = reply_->read(bufferSize);
    received_ += bytes.size();
    if (received_ > bounds_.size) return complete(QStringLiteral("it is larger than it may be"));
    if (!sink_(bytes)) return complete(QStringLiteral("it could not be written to the disk"));
  }
}

void UpdateTransfer::checkProgress() {
  if (received_ - std::exchange(receivedBefore_, received_) >= bounds_.progress) return;
  complete(QStringLiteral("the server is too slow"));
}

void UpdateTransfer::end() {
  const auto status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  if (status >= 400) {
    return complete(QStringLiteral("the server answered with error %1").arg(status));
  }
  if (reply_->error() != QNetworkReply::NoError) return complete(reply_->errorString());
  read();
  if (reply_) complete({});
}

void UpdateTransfer::complete(const QString& failure) {
  patience_.stop();
  auto* reply = std::exchange(reply_, nullptr);
  reply->disconnect(this);
  reply->abort();
  reply->deleteLater();
  // Who hears of it may destroy this object, which callers here still use.
  QTimer::singleShot(0, this, [this, failure] {
    const auto completion = std::move(completion_);
    completion(failure);
  });
}

}  // namespace zephyx
