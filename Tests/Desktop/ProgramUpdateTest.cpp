#include <QtGui/QImage>

#include "Tests/Desktop/ProgramTest.h"
#include "Tests/Desktop/UpdateFeed.h"

namespace zephyx {
namespace {

/// The whole program with a feed on this machine, another program in front.
class ProgramUpdateTest : public ProgramTest {
 protected:
  static void SetUpTestSuite() {}
  void SetUp() override {
    feed_.offer("2.0", "package");
    desktop_ = std::make_unique<VirtualDesktop>();
    startProgram({{"ZEPHYX_UPDATE_FEED", feed_.address().toStdString()},
                  {"ZEPHYX_UPDATE_KEY", feed_.publicKey().toBase64().toStdString()}});
  }

  std::optional<DesktopWindow> updateWindow() {
    return windows().find([&](const DesktopWindow& window) {
      return window.pid == program().pid() && window.viewable &&
             window.title.starts_with("Software Update");
    });
  }
  /// Whether a wide patch of the chip's colour is in that part of a window.
  bool showsChip(const std::optional<DesktopWindow>& window, QRect part) {
    if (!window) return false;
    const auto path = desktop().home() / "screen.png";
    desktop().screenshot(path);
    const QImage screen(QString::fromStdString(path.string()));
    const auto seen = screen.copy(part.translated(window->x, window->y));
    int count = 0;
    for (int y = 0; y < seen.height(); ++y) {
      for (int x = 0; x < seen.width(); ++x) {
        const auto pixel = seen.pixel(x, y);
        const int tint = qBlue(pixel) - qRed(pixel);
        count += tint > 18 && tint < 60 && qRed(pixel) < 80;
      }
    }
    return count > 2'500;
  }
  bool clipboardShowsChip() {
    EXPECT_TRUE(openPanel());
    return waitFor([&] { return showsChip(program().panel(), {200, 12, 320, 44}); }, briefly);
  }
  bool translateShowsChip() {
    input().chord({key::Control, key::Alt, key::Super, key::L});
    EXPECT_TRUE(waitFor([&] { return program().hasKeyboard(program().translatePanel()); }));
    const auto isShown = [&] { return showsChip(program().translatePanel(), {200, 16, 380, 44}); };
    return waitFor(isShown, briefly);
  }
  bool mainShowsChip() {
    input().chord({key::Shift, key::Super, key::Space});
    EXPECT_TRUE(waitFor([&] { return program().hasKeyboard(program().mainWindow()); }));
    const auto window = program().mainWindow().value();
    return waitFor([&] { return showsChip(window, {10, window.height - 110, 270, 80}); }, briefly);
  }
  void closeBy(std::uint8_t keyCode, const std::function<bool()>& isClosed) {
    input().tap(keyCode);
    EXPECT_TRUE(waitFor(isClosed));
  }

  static constexpr auto briefly = std::chrono::milliseconds(1'500);
  HttpsServer server_{{}, HttpsServer::Protocol::http};
  UpdateFeed feed_{server_};
};

TEST_F(ProgramUpdateTest, AnUpdateFoundInTheBackgroundIsOnEveryScreenUntilTheUserHasSeenIt) {
  ASSERT_TRUE(waitFor([&] { return program().hasKeyboard(program().mainWindow()); }));
  const TargetProgram other(desktop(), TargetProgram::Kind::Qt);
  ASSERT_TRUE(waitFor([&] { return !program().mainWindow(); }));
  ASSERT_TRUE(
      waitFor([&] { return server_.requests("/feed.xml") == 1; }, std::chrono::seconds(20)));
  EXPECT_TRUE(holdsFor([&] { return !updateWindow() && other.isActive(); },
                       std::chrono::milliseconds(500)));

  EXPECT_TRUE(mainShowsChip());
  ASSERT_TRUE(other.activate());
  EXPECT_TRUE(translateShowsChip());
  closeBy(key::Escape, [&] { return !program().translatePanel(); });
  EXPECT_TRUE(clipboardShowsChip());
  const auto panel = program().panel();
  ASSERT_TRUE(panel);
  input().click(panel->x + 440, panel->y + 34);
  ASSERT_TRUE(waitFor([&] { return program().hasKeyboard(updateWindow()); }));
  EXPECT_TRUE(waitFor([&] { return !program().panel(); }));
  closeBy(key::Escape, [&] { return !updateWindow(); });

  EXPECT_FALSE(clipboardShowsChip());
  closeBy(key::Escape, [&] { return !program().panel(); });
  EXPECT_FALSE(translateShowsChip());
  closeBy(key::Escape, [&] { return !program().translatePanel(); });
  EXPECT_FALSE(mainShowsChip());
}

}  // namespace
}  // namespace zephyx
