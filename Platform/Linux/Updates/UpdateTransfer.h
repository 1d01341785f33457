#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>
#include <chrono>
#include <functional>

class QNetworkAccessManager;
class QNetworkReply;
class QUrl;

namespace zephyx {

struct UpdateConfiguration;

/// Loads one file from a web server, with bounds on its size and its slowness. Redirections are
/// followed to where the configuration allows loading from. Destroyed before its end, it ends
/// without a completion. Main thread.
class UpdateTransfer final : public QObject {
 public:
  struct Bounds {
    qint64 size = 0;
    /// In each span of this length at least `progress` bytes come.
    std::chrono::milliseconds patience;
    qint64 progress = 0;
  };
  /// Takes the next bytes; false when it cannot.
  using Sink = std::function<bool(const QByteArray& bytes)>;
  /// Called once, later; `failure` says in words what went wrong, and is empty when all came.
  using Completion = std::function<void(const QString& failure)>;

  UpdateTransfer(QNetworkAccessManager& network, const UpdateConfiguration& configuration,
                 const QUrl& url, Bounds bounds, Sink sink, Completion completion);
  ~UpdateTransfer() override;

 private:
  void follow(const QUrl& url);
  void read();
  void checkProgress();
  void end();
  void complete(const QString& failure);

  const UpdateConfiguration& configuration_;
  const Bounds bounds_;
  Sink sink_;
  Completion completion_;
  QTimer patience_;
  QNetworkReply* reply_ = nullptr;  ///< null once it has ended
  qint64 received_ = 0;
  qint64 receivedBefore_ = 0;  ///< when the current span began
};

}  // namespace zephyx
