#pragma once

#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <memory>
#include <string>
#include <vector>

#include "Platform/Linux/LinuxDispatch.h"
#include "Platform/Linux/LinuxSystemLog.h"
#include "Platform/Linux/LinuxUserDefaults.h"
#include "Platform/Linux/Toolkit.h"
#include "Platform/Linux/Updates/LinuxSoftwareUpdate.h"
#include "Platform/Linux/Windows/DesktopWatch.h"
#include "Platform/Linux/Windows/WindowHints.h"
#include "Tests/Desktop/RunUntil.h"
#include "Tests/Desktop/UpdateFeed.h"
#include "Tests/Desktop/VirtualDesktop.h"

class QPushButton;
class QWidget;

namespace zephyx {

/// A byte now and then.
inline const HttpsReply dripping{.padding = 1'000'000, .interval = std::chrono::milliseconds(50)};

/// The update framework of a version 1.0 on a real desktop, with a feed on this
/// machine. The delegate is this program's: it writes down what it is asked and told.
class UpdateTest : public testing::Test, public SoftwareUpdateDelegate {
 protected:
  UpdateTest();
  ~UpdateTest() override;

  using Lines = std::vector<std::string>;

  /// Without a scheduled check, unless a test asks for one.
  UpdateConfiguration configuration(const QString& feed) const;
  UpdateConfiguration configuration() const { return configuration(feed().address()); }
  UpdateConfiguration checkingAtOnce() const;
  void start(UpdateConfiguration configuration);
  void stop();

  HttpsServer& server() { return *server_; }
  const UpdateFeed& feed() const { return *feed_; }
  UpdateFeed& feed() { return *feed_; }
  SoftwareUpdate& updates() { return *updates_; }
  LinuxUserDefaults& defaults() { return *defaults_; }
  VirtualDesktop& desktop() { return *desktop_; }

  /// Lets time pass; true when the condition held all along.
  [[nodiscard]] static bool staysTrue(const std::function<bool()>& condition,
                                      std::chrono::milliseconds duration) {
    return runsWithout([&] { return !condition(); }, duration);
  }
  /// The window; null when it is not on the screen.
  static QWidget* window();
  /// All that the window says, buttons aside.
  static std::string words();
  [[nodiscard]] static bool waitForWords(const std::string& part);
  static QPushButton* button(const char* label);
  static void press(const char* label);
  QStringList filesInFolder() const;

  std::optional<std::string> feedUrlString() override { return std::nullopt; }
  bool supportsGentleScheduledUpdateReminders() override { return true; }
  bool shouldHandleShowingScheduledUpdate(const std::string& version, bool focus) override;
  void willHandleShowingUpdate(bool handled, const std::string& version,
                               const UpdateState& state) override;
  void didReceiveUserAttention(const std::string& version) override;

  Lines told;              ///< to the delegate
  QStringList opened;      ///< by the desktop
  bool isInFront = false;  ///< the program

 private:
  std::unique_ptr<VirtualDesktop> desktop_;
  std::unique_ptr<DesktopWatch> watch_;
  std::unique_ptr<Toolkit> toolkit_;
  std::unique_ptr<WindowHints> hints_;
  std::unique_ptr<LinuxDispatch> dispatch_;
  LinuxSystemLog log_;
  std::unique_ptr<LinuxUserDefaults> defaults_;
  std::unique_ptr<HttpsServer> server_;
  std::unique_ptr<UpdateFeed> feed_;
  std::unique_ptr<LinuxSoftwareUpdate> updates_;
  Registration checks_;
};

}  // namespace zephyx
