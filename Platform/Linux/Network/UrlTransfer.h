#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include "Platform/UrlSession.h"

class QNetworkAccessManager;
class QNetworkReply;
class QSslConfiguration;

namespace zephyx {

/// One request and its answer; deletes itself after the completion. Destroyed before, it ends the
/// request without one. Lives on one thread.
class UrlTransfer final : public QObject {
 public:
  UrlTransfer(QNetworkAccessManager& network, const QSslConfiguration& configuration,
              const UrlRequest& request, UrlCompletion completion, QObject* parent);
  ~UrlTransfer() override;

 private:
  void read();
  void end();
  void complete(std::optional<UrlResponse> response);

  UrlCompletion completion_;
  const std::size_t maximumBodySize_;
  QTimer timer_;
  QNetworkReply* reply_ = nullptr;  ///< null once the request has ended
  Bytes body_;
};

}  // namespace zephyx
