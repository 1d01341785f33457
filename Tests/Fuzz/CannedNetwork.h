#pragma once

#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>
#include <algorithm>
#include <cstring>

namespace zephyx {

/// A reply whose bytes are already there.
class CannedReply final : public QNetworkReply {
 public:
  explicit CannedReply(const QNetworkRequest& request) {
    setRequest(request);
    setUrl(request.url());
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
  }

  void deliver(const QByteArray& body, int status, qsizetype piece) {
    emit requestSent();
    if (status != 0) setAttribute(QNetworkRequest::HttpStatusCodeAttribute, status);
    for (qsizetype at = 0; at < body.size() && !aborted_; at += piece) {
      received_ += body.mid(at, piece);
      emit readyRead();
    }
    if (aborted_) return;
    if (status == 0 || status >= 400) setError(UnknownServerError, QStringLiteral("no answer"));
    setFinished(true);
    emit finished();
  }

  void abort() override { aborted_ = true; }
  bool isSequential() const override { return true; }
  qint64 bytesAvailable() const override {
    return received_.size() + QNetworkReply::bytesAvailable();
  }

 protected:
  qint64 readData(char* to, qint64 most) override {
    const auto count = std::min<qint64>(most, received_.size());
    std::memcpy(to, received_.constData(), static_cast<std::size_t>(count));
    received_.remove(0, count);
    return count;
  }

 private:
  QByteArray received_;
  bool aborted_ = false;
};

/// A network on which each request has its answer once it is told.
class CannedNetwork final : public QNetworkAccessManager {
 public:
  /// To the last request.
  void answer(const QByteArray& body, int status, qsizetype piece) {
    reply_->deliver(body, status, piece);
  }

 protected:
  QNetworkReply* createRequest(Operation, const QNetworkRequest& request, QIODevice*) override {
    return reply_ = new CannedReply(request);
  }

 private:
  CannedReply* reply_ = nullptr;
};

}  // namespace zephyx
