#pragma once

#include <QtCore/QFile>
#include <QtCore/QString>
#include <functional>
#include <memory>
#include <variant>

#include "Platform/LifetimeGuard.h"
#include "Platform/Linux/Updates/Appcast.h"

class QNetworkAccessManager;

namespace zephyx {

class DispatchQueue;
class UpdateTransfer;
struct UpdateConfiguration;

/// Loads the file of a chosen release into the folder for downloads, where nothing else lies then,
/// and verifies it. A file that is not all that it should be is removed; so is one whose download
/// is destroyed before its end. Main thread.
class UpdateDownload {
 public:
  struct Handlers {
    std::function<void(qint64 received)> progressed;
    std::function<void()> verifying;
    /// Called once, later, with the path of the verified file; may destroy the download.
    std::function<void(std::variant<QString, UpdateRefusal> end)> ended;
  };

  UpdateDownload(const UpdateConfiguration& configuration, AppcastItem item, DispatchQueue& main,
                 DispatchQueue& background, Handlers handlers);
  ~UpdateDownload();

  /// Called once.
  void start(QNetworkAccessManager& network);

 private:
  bool openFile();
  void transferred(const QString& failure);
  void verified(bool isGenuine);
  void refuse(const QString& reason);

  const UpdateConfiguration& configuration_;
  const AppcastItem item_;
  DispatchQueue& main_;
  DispatchQueue& background_;
  const Handlers handlers_;
  const QString path_;
  QFile file_;  ///< under another name until it is verified
  bool isKept_ = false;
  std::unique_ptr<UpdateTransfer> transfer_;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
