#include <xcb/xcb.h>

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVirtualObject>
#include <future>

#include "Platform/Image.h"
#include "Platform/Linux/Workspace/LinuxWorkspace.h"
#include "Platform/Linux/X11.h"
#include "Tests/Desktop/InputTest.h"

namespace zephyx {
namespace {

using Kind = TargetProgram::Kind;

class InputWorkspaceTest : public InputTest {
 protected:
  void SetUp() override {
    InputTest::SetUp();
    workspace_ = std::make_unique<LinuxWorkspace>();
  }
  void TearDown() override {
    workspace_.reset();
    InputTest::TearDown();
  }

  std::shared_ptr<RunningApplication> frontmost() {
    pumpAll();
    return workspace_->frontmostApplication();
  }
  std::shared_ptr<RunningApplication> frontmostFromAnotherThread() {
    return std::async(std::launch::async, [&] { return workspace_->frontmostApplication(); }).get();
  }
  void overwriteActiveWindow(xcb_window_t window) {
    X11Connection x11;
    xcb_change_property(x11.get(), XCB_PROP_MODE_REPLACE, x11.root(),
                        x11.atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW, 32, 1, &window);
    EXPECT_EQ(x11.activeWindow(), window);
  }
  /// A stand-in for a helper program, which notes how it was called: one argument a line.
  std::filesystem::path installHelper(const std::string& name) {
    const auto log = desktop().home() / (name + ".log");
    const auto folder = desktop().home() / "bin";
    std::filesystem::create_directories(folder);
    writeFile(folder / name, "#!/bin/sh\nprintf '%s\\n' \"$@\" >>'" + log.string() + "'\n");
    std::filesystem::permissions(folder / name, std::filesystem::perms::owner_all);
    qputenv("PATH", QByteArray::fromStdString(folder.string() + ":" + getenv("PATH")));
    return log;
  }

  std::unique_ptr<LinuxWorkspace> workspace_;
};

TEST_F(InputWorkspaceTest, NamesTheProgramInFrontAsItsDesktopEntryDoes) {
  std::filesystem::create_directories(desktop().dataHome() / "applications/kde");
  writeFile(desktop().dataHome() / "applications/kde/special.desktop",
            "[Desktop Entry]\nType=Application\nName=Special\nName[de]=Besonders\nIcon=none\n"
            "StartupWMClass=Special Class\n[Desktop Action other]\nName=Other\n");
  struct Case {
    std::vector<std::string> command;
    const char* identifier;
    const char* name;
    bool hasIcon;
  };
  const Case cases[] = {
      {{"mousepad", "--disable-server"}, "org.xfce.mousepad", "Mousepad", true},
      {{"xterm"}, "debian-xterm", "XTerm", true},
      {{"xterm", "-class", "UXTerm"}, "debian-uxterm", "UXTerm", true},
      {{"xterm", "-class", "Special Class"}, "kde-special", "Special", false},
      {{"xterm", "-name", "plain", "-class", "Unheard"}, "unheard", "Unheard", false},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.identifier);
    auto process = desktop().start(test.command);
    const auto window = windows().waitForManaged(
        test.name, [&](const DesktopWindow& w) { return w.viewable && w.pid == process.pid(); });
    ASSERT_TRUE(windows().activate(window.id));
    for (const auto& application : {frontmost(), frontmostFromAnotherThread(),
                                    workspace_->applicationForProcess(process.pid())}) {
      ASSERT_TRUE(application);
      EXPECT_EQ(application->bundleIdentifier(), test.identifier);
      EXPECT_EQ(application->localizedName(), test.name);
      EXPECT_TRUE(application->isActive());
      const auto icon = application->icon();
      ASSERT_EQ(icon != nullptr, test.hasIcon);
      if (icon) {
        EXPECT_GE(icon->pixelSize().wide, 48);
        EXPECT_LE(icon->pixelSize().wide, 256);
      }
    }
  }
}

TEST_F(InputWorkspaceTest, BringsBackTheWindowThatWasMetFromWhereverItIs) {
  writeFile(desktop().home() / "a", "");
  writeFile(desktop().home() / "b", "");
  auto editor = desktop().start({"mousepad", "--disable-server", "--opening-mode=window",
                                 desktop().home() / "a", desktop().home() / "b"});
  std::vector<WindowId> ids;
  for (const char* title : {"/a - Mousepad", "/b - Mousepad"}) {
    ids.push_back(windows()
                      .waitForManaged(title,
                                      [&](const DesktopWindow& w) {
                                        return w.viewable &&
                                               w.title.find(title) != std::string::npos;
                                      })
                      .id);
  }
  TargetProgram terminal(desktop(), Kind::Terminal);
  ASSERT_TRUE(windows().activate(ids[0]));
  const auto first = frontmost();
  ASSERT_TRUE(windows().activate(ids[1]));
  const auto second = frontmost();
  const auto window = [](WindowId id) { return std::to_string(id); };

  struct Disturbance {
    std::vector<std::string> command;
    std::function<bool()> hasHappened;
  };
  const Disturbance disturbances[] = {
      {{"true"}, [] { return true; }},
      {{"xdotool", "windowminimize", window(ids[0])},
       [&] { return !windows().describe(ids[0]).viewable; }},
      {{"xdotool", "set_desktop_for_window", window(ids[0]), "2"},
       [&] { return !windows().describe(ids[0]).viewable; }},
      {{"xdotool", "set_desktop", "1"},
       [&] { return !windows().describe(terminal.window().id).viewable; }},
  };
  for (const auto& disturbance : disturbances) {
    SCOPED_TRACE(disturbance.command.back());
    desktop().run({"xdotool", "set_desktop", "0"});
    ASSERT_TRUE(waitFor([&] { return windows().describe(terminal.window().id).viewable; }));
    ASSERT_TRUE(terminal.activate());
    ASSERT_EQ(desktop().run(disturbance.command).status, 0);
    ASSERT_TRUE(waitFor(disturbance.hasHappened));
    EXPECT_FALSE(first->isActive());
    EXPECT_TRUE(first->activateIgnoringOtherApps());
    EXPECT_TRUE(runUntil([&] { return first->isActive(); }));
    EXPECT_EQ(windows().active(), ids[0]);
    EXPECT_TRUE(windows().describe(ids[0]).viewable);
    EXPECT_FALSE(second->isActive());
  }
  EXPECT_TRUE(second->activateCooperatively());
  EXPECT_TRUE(runUntil([&] { return second->isActive() && !first->isActive(); }));

  ASSERT_TRUE(terminal.activate());
  const auto byProcess = workspace_->applicationForProcess(editor.pid());
  EXPECT_FALSE(byProcess->isActive());
  EXPECT_TRUE(byProcess->activateIgnoringOtherApps());
  EXPECT_TRUE(runUntil([&] { return byProcess->isActive(); }));

  windows().close(ids[0]);
  ASSERT_TRUE(waitFor([&] { return !windows().exists(ids[0]); }));
  EXPECT_FALSE(first->isActive());
  EXPECT_FALSE(first->activateIgnoringOtherApps());
}

TEST_F(InputWorkspaceTest, IsNotFooledByAnotherProgramUnderTheSameWindowNumber) {
  auto old = std::make_unique<TargetProgram>(desktop(), Kind::Terminal);
  const auto id = old->window().id;
  const auto application = frontmost();
  ASSERT_TRUE(application->isActive());
  old.reset();
  ASSERT_TRUE(waitFor([&] { return !windows().exists(id); }));
  const TargetProgram fresh(desktop(), Kind::Terminal);
  ASSERT_EQ(fresh.window().id, id) << "the server did not reuse the number";
  EXPECT_FALSE(application->isActive());
  EXPECT_FALSE(application->activateIgnoringOtherApps());
}

TEST_F(InputWorkspaceTest, NeedsTheKeyboardToBeInTheWindow) {
  const TargetProgram one(desktop(), Kind::Qt);
  const auto application = frontmost();
  const TargetProgram other(desktop(), Kind::Terminal);
  overwriteActiveWindow(one.window().id);
  EXPECT_FALSE(application->isActive());
}

TEST_F(InputWorkspaceTest, LooksPastTheMomentBetweenTwoWindows) {
  const TargetProgram target(desktop(), Kind::Terminal);
  ASSERT_TRUE(frontmost());
  overwriteActiveWindow(XCB_NONE);
  const auto remembered = workspace_->frontmostApplication();
  ASSERT_TRUE(remembered);
  EXPECT_EQ(remembered->localizedName(), "XTerm");
  auto found = std::async(std::launch::async, [&] { return workspace_->frontmostApplication(); });
  pass(std::chrono::milliseconds(20));
  overwriteActiveWindow(target.window().id);
  EXPECT_TRUE(found.get());

  overwriteActiveWindow(XCB_NONE);
  runFor(std::chrono::milliseconds(150));
  EXPECT_FALSE(workspace_->frontmostApplication());
  EXPECT_FALSE(frontmostFromAnotherThread());
}

TEST_F(InputWorkspaceTest, HandsAUrlOverWholeAndNothingElse) {
  const auto log = installHelper("xdg-open");
  for (const char* refused : {"", "--help", "-h:x", "/etc/passwd", "no url"})
    workspace_->openUrl(refused);
  const std::string url = "https://example.org/a?b=$(touch%20x)&c=;d '\"";
  workspace_->openUrl(url);
  EXPECT_TRUE(runUntil([&] { return readFile(log) == url + "\n"; })) << readFile(log);
}

TEST_F(InputWorkspaceTest, OpensTheFolderWhereThereIsNoFileManager) {
  const auto log = installHelper("xdg-open");
  workspace_->activateFileViewerSelecting("/tmp/a folder/file");
  EXPECT_TRUE(runUntil([&] { return readFile(log) == "file:///tmp/a folder\n"; })) << readFile(log);
}

class FileManager : public QDBusVirtualObject {
 public:
  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    member = message.member();
    items = message.arguments().value(0).toStringList();
    bus.send(message.createReply());
    return true;
  }
  QString member;
  QStringList items;
};

class InputFileManagerTest : public InputWorkspaceTest {
 protected:
  InputFileManagerTest() { options_.sessionBus = true; }
};

TEST_F(InputFileManagerTest, ShowsAFileInTheFileManager) {
  if (!QDBusConnection::sessionBus().isConnected())
    GTEST_SKIP() << "the toolkit met another session bus in an earlier test of this process";
  auto bus = QDBusConnection::connectToBus(
      QString::fromStdString(desktop().environment().at("DBUS_SESSION_BUS_ADDRESS")), "manager");
  FileManager manager;
  ASSERT_TRUE(bus.registerVirtualObject("/org/freedesktop/FileManager1", &manager));
  ASSERT_TRUE(bus.registerService("org.freedesktop.FileManager1"));
  workspace_->activateFileViewerSelecting("/tmp/a b");
  EXPECT_TRUE(runUntil([&] { return !manager.member.isEmpty(); }));
  EXPECT_EQ(manager.member, "ShowItems");
  EXPECT_EQ(manager.items, QStringList{"file:///tmp/a b"});
  QDBusConnection::disconnectFromBus("manager");
}

}  // namespace
}  // namespace zephyx
