#include <cstdlib>

#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {
namespace {

namespace fs = std::filesystem;

/// A stranger starts the program on a desktop that lacks something, or on the home folder of an
/// earlier version.
class ProgramFirstRunTest : public ProgramTest {
 protected:
  static void SetUpTestSuite() {}
  void SetUp() override {}

  void makeDesktop(const VirtualDesktopOptions& options = {}) {
    program_.reset();
    desktop_ = std::make_unique<VirtualDesktop>(options);
  }

  /// Where the notices in the main window end, by the coloured line at the left of each.
  std::vector<int> notices() {
    const auto window = program_->mainWindow();
    if (!window) return {};
    constexpr std::uint32_t lineColor = 0xffc66d;
    const auto column = windows().pixels(window->id, lineX, 0, 1, window->height);
    std::vector<int> ends;
    for (std::size_t y = 1; y < column.size(); ++y) {
      const bool was = (column[y - 1] & 0xffffff) == lineColor;
      if (was && (column[y] & 0xffffff) != lineColor) ends.push_back(static_cast<int>(y));
    }
    return ends;
  }
  bool shows(std::size_t count) {
    return waitFor([&] { return program_->mainWindow() && notices().size() == count; },
                   std::chrono::seconds(10));
  }

  static constexpr int lineX = 33;
};

TEST_F(ProgramFirstRunTest, WithoutATrayItSaysSoAndEverythingOpensAnotherWay) {
  makeDesktop();
  startProgram({{"DBUS_SESSION_BUS_ADDRESS", ""}});  // nor a session bus
  ASSERT_TRUE(shows(1));
  ASSERT_TRUE(waitFor([&] { return program_->hasKeyboard(program_->mainWindow()); }));
  input().chord({key::Shift, key::Super, key::Space});
  ASSERT_TRUE(waitFor([&] { return !program_->mainWindow(); }));
  ASSERT_TRUE(openPanel());
  input().tap(key::Escape);
  ASSERT_TRUE(waitUntilPanelIsGone());
  EXPECT_EQ(desktop_->start({ZephyxProcess::executable().string()}).waitForExit(), 0);
  ASSERT_TRUE(waitFor([&] { return program_->mainWindow().has_value(); }));
  EXPECT_TRUE(shows(1));

  desktop_->startTray();
  EXPECT_TRUE(shows(0));
  EXPECT_TRUE(waitFor([&] { return program_->trayIcon().has_value(); }));
  desktop_->stopTray();
  ASSERT_TRUE(shows(1));
  const auto window = *program_->mainWindow();
  const auto isMenuShown = [&] {
    const auto menu = program_->menu();
    return menu && windows().distinctColors(*menu) > 8;
  };
  // Now and then a click here has no effect, for a reason not known yet; the next one has.
  const auto clickOpensMenu = [&] {
    input().click(window.x + lineX + 50, window.y + notices().front() - 15);
    return waitFor(isMenuShown, std::chrono::seconds(3));
  };
  EXPECT_TRUE(waitFor(clickOpensMenu, std::chrono::seconds(15)));
}

TEST_F(ProgramFirstRunTest, AWaylandSessionIsNamedInTheWindowAndWithoutADisplayOnTheTerminal) {
  makeDesktop({.tray = true});
  const Environment wayland{{"XDG_SESSION_TYPE", "wayland"}, {"WAYLAND_DISPLAY", "wayland-0"}};
  startProgram(wayland);
  EXPECT_TRUE(shows(1));

  const auto output = desktop_->home() / "output";
  for (const char* display : {"", ":4711"}) {
    auto environment = wayland;
    environment["DISPLAY"] = display;
    auto lost = desktop_->start({ZephyxProcess::executable().string()}, environment, output);
    EXPECT_EQ(lost.waitForExit(), EXIT_FAILURE);
    const auto words = readFile(output);
    EXPECT_NE(words.find("cannot reach an X11 display"), std::string::npos) << words;
    EXPECT_NE(words.find("Wayland session"), std::string::npos) << words;
  }
}

TEST_F(ProgramFirstRunTest, PanelsAreOpaqueUntilACompositorRunsAndAgainAfterIt) {
  makeDesktop({.tray = true});
  startProgram();
  const auto pixel = [&](int x, int y) {
    const auto seen = windows().pixels(windows().root(), x, y, 1, 1);
    return seen.empty() ? 0 : seen.front() & 0xffffff;
  };
  constexpr int farBelow = 799;
  const auto isOpaque = [&](bool opaque) {
    return waitFor([&] {
      const auto panel = program_->panel();
      const auto corner = panel ? pixel(panel->x, panel->y) : 0;  // black is what must not be
      return corner != 0 && (corner != pixel(0, farBelow)) == opaque;
    });
  };
  const auto reopen = [&] {
    input().tap(key::Escape);
    EXPECT_TRUE(waitUntilPanelIsGone() && openPanel());
  };
  input().chord({key::Shift, key::Super, key::Space});  // the notes, which stand behind
  ASSERT_TRUE(waitFor([&] { return !program_->mainWindow(); }));
  ASSERT_TRUE(openPanel());
  EXPECT_TRUE(isOpaque(true));
  desktop_->startCompositor();
  EXPECT_TRUE(isOpaque(true)) << "the open panel stays as it is";
  reopen();
  EXPECT_TRUE(isOpaque(false));
  desktop_->stopCompositor();
  EXPECT_TRUE(isOpaque(true));
  reopen();
  EXPECT_TRUE(isOpaque(true));
}

TEST_F(ProgramFirstRunTest, AServerWithoutTypingOrDevicesOfItsOwnStillGivesTheHistory) {
  for (const char* extension : {"XTEST", "XInputExtension"}) {
    SCOPED_TRACE(extension);
    makeDesktop({.serverArguments = {"-extension", extension}});
    startProgram();
    desktop_->copy("recorded");
    EXPECT_TRUE(program_->waitForEntry("recorded"));
    EXPECT_EQ(desktop_->start({ZephyxProcess::executable().string()}).waitForExit(), 0);
  }
}

TEST_F(ProgramFirstRunTest, HomesOfEarlierAndLaterVersionsLoseNothing) {
  for (const auto* version : {"first", "present", "newer"}) {
    SCOPED_TRACE(version);
    makeDesktop();
    const fs::path home = fs::path(ZEPHYX_TEST_DATA) / "homes" / version;
    const auto settings = desktop_->configHome() / "com.zephyx.app" / "defaults.json";
    const auto data = desktop_->dataHome() / "com.zephyx.app";
    fs::create_directories(settings.parent_path());
    fs::create_directories(data);
    fs::copy_file(home / "defaults.json", settings);
    for (const std::string store : {"clipboard_history", "notes"}) {
      ASSERT_EQ(desktop_
                    ->run({"sqlite3", (data / (store + ".sqlite")).string()},
                          readFile(home / (store + ".sql")))
                    .status,
                0);
    }
    program_ = std::make_unique<ZephyxProcess>(*desktop_);
    constexpr std::uint16_t controlAltSuper = 0x4c;
    // Asking who has a key takes it for a moment: only once the program had its turn.
    ASSERT_TRUE(program_->waitForLog("[Clipboard] initialize() done"));
    ASSERT_TRUE(waitFor([&] { return windows().isGrabbedByOthers(key::B, controlAltSuper); }));
    ASSERT_TRUE(waitFor([&] {
      const auto window = program_->mainWindow();
      return window && windows().focused() == window->id;
    }));
    const TargetProgram target(*desktop_, TargetProgram::Kind::Qt);
    ASSERT_TRUE(waitFor([&] { return !program_->mainWindow(); }));
    // Where the earlier version's user had put it.
    input().chord({key::Control, key::Alt, key::Super, key::B});
    ASSERT_TRUE(waitFor([&] { return panelHasKeyboard(); }));
    input().tap(key::Return);
    EXPECT_TRUE(target.waitForText("newest of the old")) << target.text();
    EXPECT_EQ(program_->history().count(), 4);
    for (const auto& file : fs::directory_iterator(data))
      EXPECT_EQ(file.path().filename().string().find(".sqlite."), std::string::npos) << file;
  }
}

}  // namespace
}  // namespace zephyx
