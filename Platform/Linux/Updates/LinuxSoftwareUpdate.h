#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtNetwork/QNetworkAccessManager>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Platform/Linux/Updates/UpdateChoice.h"
#include "Platform/Linux/Updates/UpdateConfiguration.h"
#include "Platform/Linux/Updates/UpdateSchedule.h"
#include "Platform/SoftwareUpdate.h"

namespace zephyx {

class Dispatch;
class SystemLog;
class UpdateCheck;
class UpdateDownload;
class UpdateWindow;
class UserDefaults;
class WindowHints;
struct UpdatePage;

/// What the update framework needs of the desktop. Outlives it.
struct UpdateDesktop {
  UserDefaults& userDefaults;
  Dispatch& dispatch;
  SystemLog& log;
  WindowHints& windowHints;
  std::function<bool()> isActive;                ///< the program is in front
  std::function<void(const QString& url)> open;  ///< by the user's program for it
  std::function<void(const QString& path)> showInFolder;
};

/// Updates from a signed feed. A verified package is handed to the desktop's program for packages,
/// which asks the user for the right to install it.
class LinuxSoftwareUpdate final : public SoftwareUpdate {
 public:
  LinuxSoftwareUpdate(UpdateConfiguration configuration, UpdateDesktop desktop);
  ~LinuxSoftwareUpdate() override;

  std::optional<std::string> unavailableReason() const override;
  Registration start(SoftwareUpdateDelegate& delegate) override;
  void checkForUpdates() override;

 private:
  void stop();
  void checkOnSchedule();
  void check();
  void checked(const UpdateChoice& choice);
  void foundOnSchedule(const AppcastItem& item);
  void willShow(bool handled);
  void attend();

  void showChecking();
  void showFound();
  void showEnd(const QString& title, const QString& text);
  void showNoUpdate(const NoUpdate& none);
  void install();
  void downloaded(const std::variant<QString, UpdateRefusal>& end);
  void showPage(UpdatePage page);
  void bringWindowToFront();
  void closeWindow();
  bool windowIsShown() const;

  const UpdateConfiguration configuration_;
  const UpdateDesktop desktop_;
  UpdateSchedule schedule_;
  SoftwareUpdateDelegate* delegate_ = nullptr;  ///< null unless started
  QTimer timer_;
  QElapsedTimer sinceStart_;
  std::unique_ptr<QNetworkAccessManager> network_;  ///< made for the first check
  std::unique_ptr<UpdateCheck> check_;              ///< null unless one is under way
  std::unique_ptr<UpdateDownload> download_;
  bool isUserInitiated_ = false;          ///< the check under way, or the last one
  std::optional<AppcastItem> found_;      ///< until the user has decided about it
  std::optional<std::string> announced_;  ///< what the delegate shows until it is attended to
  std::unique_ptr<UpdateWindow> window_;  ///< made when it is first shown
};

}  // namespace zephyx
