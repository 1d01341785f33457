#pragma once

#include <QtCore/QByteArray>
#include <functional>
#include <memory>

#include "Platform/Linux/Updates/UpdateChoice.h"

class QNetworkAccessManager;

namespace zephyx {

class UpdateTransfer;

/// Loads the feed and chooses from it. Destroyed before its end, it ends without a completion. Main
/// thread.
class UpdateCheck {
 public:
  /// Called once, later; may destroy the check.
  using Completion = std::function<void(UpdateChoice choice)>;

  UpdateCheck(QNetworkAccessManager& network, const UpdateConfiguration& configuration,
              Completion completion);
  ~UpdateCheck();

 private:
  UpdateChoice choose(const QString& failure) const;

  const UpdateConfiguration& configuration_;
  QByteArray feed_;
  std::unique_ptr<UpdateTransfer> transfer_;
};

}  // namespace zephyx
