#include "Runner/UpdaterService.h"

#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

class UpdaterServiceTest : public HostTest {
 protected:
  std::vector<SimulatedScreen*> screens() {
    return {&mainScreen(), &translateScreen(), &panelScreen()};
  }
  /// The versions that a screen was told of since it was last asked, "null" for none.
  static std::vector<std::string> told(SimulatedScreen& screen) {
    std::vector<std::string> versions;
    for (const auto& call : screen.takeCalls()) {
      if (call.method != "updateAvailable") continue;
      const auto* version = call.arguments.asMap()->find("version");
      EXPECT_EQ(call.arguments.asMap()->size(), 1u);
      versions.push_back(version->isNull() ? "null" : *version->asString());
    }
    return versions;
  }
  void expectAllTold(const std::vector<std::string>& versions) {
    desktop.dispatch.settle();
    for (auto* screen : screens()) EXPECT_EQ(told(*screen), versions);
  }
};

TEST_F(UpdaterServiceTest, AnUpdateFoundInTheBackgroundIsAnnouncedWithoutAWindow) {
  launch();
  ASSERT_TRUE(desktop.softwareUpdate.isStarted());
  for (auto* screen : screens()) {
    EXPECT_EQ(screen->call("updateState"), MethodReply(Value()));
  }
  desktop.softwareUpdate.offer("2.0");
  desktop.softwareUpdate.runScheduledCheck(false);
  EXPECT_FALSE(desktop.softwareUpdate.windowIsShown());
  expectAllTold({"2.0"});
  for (auto* screen : screens()) {
    EXPECT_EQ(screen->call("updateState"), MethodReply(Value("2.0"))) << "one that starts later";
  }

  EXPECT_EQ(translateScreen().call("updateCheck"), MethodReply(Value()));
  EXPECT_TRUE(desktop.softwareUpdate.windowIsShown());
  expectAllTold({"null"});
  EXPECT_EQ(mainScreen().call("updateState"), MethodReply(Value()));
}

TEST_F(UpdaterServiceTest, InImmediateFocusTheWindowComesAndIsAttendedTo) {
  launch();
  mainScreen().messenger()->shutDown();  // a screen that is not there is skipped
  desktop.softwareUpdate.offer("2.0");
  desktop.softwareUpdate.runScheduledCheck(true);
  EXPECT_TRUE(desktop.softwareUpdate.windowIsShown());
  desktop.softwareUpdate.userSeesWindow();
  desktop.dispatch.settle();
  EXPECT_THAT(told(translateScreen()), ElementsAre("2.0", "null"));
  EXPECT_THAT(told(panelScreen()), ElementsAre("2.0", "null"));
}

TEST_F(UpdaterServiceTest, ACheckIsAnsweredBeforeItBegins) {
  launch();
  const auto reply = mainScreen().send("updateCheck");
  EXPECT_EQ(desktop.softwareUpdate.userChecks(), 0);
  desktop.dispatch.settle();
  EXPECT_EQ(*reply, MethodReply(Value()));
  EXPECT_EQ(desktop.softwareUpdate.userChecks(), 1);
  desktop.softwareUpdate.userClosesWindow();

  statusItem().openMenu();
  ASSERT_TRUE(statusItem().choose("checkForUpdates"));
  desktop.dispatch.settle();
  EXPECT_EQ(desktop.softwareUpdate.userChecks(), 2);
  expectAllTold({});
}

TEST_F(UpdaterServiceTest, WithoutAFeedTheRowCannotBeChosenAndSaysWhy) {
  desktop.softwareUpdate.setUnavailable("This build has no update feed.");
  launch();
  EXPECT_FALSE(desktop.softwareUpdate.isStarted());
  for (const auto& item : statusItem().menu()->items()) {
    if (item->action() == "toggleMicMute") continue;  // this desktop has no microphone
    const bool isUpdate = item->action() == "checkForUpdates";
    EXPECT_EQ(item->properties().isEnabled, !isUpdate);
    EXPECT_EQ(item->properties().toolTip, isUpdate ? "This build has no update feed." : "");
  }
  statusItem().openMenu();
  EXPECT_FALSE(statusItem().choose("checkForUpdates"));
  EXPECT_EQ(mainScreen().call("updateCheck"), MethodReply(Value()));
  EXPECT_EQ(desktop.softwareUpdate.userChecks(), 0);
}

}  // namespace
}  // namespace zephyx
