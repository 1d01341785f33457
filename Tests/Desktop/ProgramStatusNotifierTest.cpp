#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {
namespace {

/// A desktop whose tray speaks over D-Bus.
class ProgramStatusNotifierTest : public ProgramTest {
 protected:
  static void SetUpTestSuite() {
    VirtualDesktopOptions options;
    options.sessionBus = true;
    desktop_ = std::make_unique<VirtualDesktop>(options);
    items_ = desktop_->home() / "items";
    host_ = desktop_->start({STATUS_NOTIFIER_HOST_EXECUTABLE, items_.string()});
    ASSERT_TRUE(waitFor([] {
      return call("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                  "org.freedesktop.DBus.Peer.Ping") == 0;
    }));
    startProgram();
  }
  static void TearDownTestSuite() {
    ProgramTest::TearDownTestSuite();
    host_ = {};
  }
  static int call(const std::string& destination, const std::string& path,
                  const std::string& method, const std::vector<std::string>& arguments = {}) {
    std::vector<std::string> command{
        "dbus-send", "--session", "--print-reply", "--dest=" + destination, path, method};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return desktop_->run(command).status;
  }

  static std::filesystem::path items_;
  static ChildProcess host_;
};

std::filesystem::path ProgramStatusNotifierTest::items_;
ChildProcess ProgramStatusNotifierTest::host_;

TEST_F(ProgramStatusNotifierTest, TheMenuOpensFromTheIconOfATrayWithoutWindows) {
  ASSERT_TRUE(waitFor([] { return !readFile(items_).empty(); }));
  const std::string content = readFile(items_);
  const std::string item = content.substr(0, content.find('\n'));
  input().movePointer(900, 300);
  EXPECT_EQ(call(item, "/StatusNotifierItem", "org.kde.StatusNotifierItem.Activate",
                 {"int32:900", "int32:300"}),
            0);
  ASSERT_TRUE(waitFor([&] { return program().menu().has_value(); }));
  EXPECT_FALSE(program().trayIcon());
  input().tap(key::Escape);
  EXPECT_TRUE(waitFor([&] { return !program().menu(); }));
}

}  // namespace
}  // namespace zephyx
