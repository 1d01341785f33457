#include <QtCore/QCoreApplication>
#include <QtGui/QImage>

#include "Tests/Desktop/ProgramTest.h"
#include "Tests/Desktop/UpdateFeed.h"

namespace zephyx {
namespace {

/// The whole program with a feed on this machine, another program in front.
class ProgramUpdateTest : public testing::Test {
 protected:
  ProgramUpdateTest() {
    feed_.offer("2.0", "package");
    program_.emplace(
        desktop_, Environment{{"ZEPHYX_UPDATE_FEED", feed_.address().toStdString()},
                              {"ZEPHYX_UPDATE_KEY", feed_.publicKey().toBase64().toStdString()}});
  }
  void TearDown() override {
    if (!HasFailure()) return;
    desktop_.screenshot("failures/ProgramUpdateTest.png");
    ADD_FAILURE() << "The program's log:\n" << program_->log();
  }

  std::optional<DesktopWindow> updateWindow() {
    return desktop_.windows().find([&](const DesktopWindow& window) {
      return window.pid == program_->pid() && window.viewable &&
             window.title.starts_with("Software Update");
    });
  }
  /// Whether a wide patch of the chip's colour is in that part of a window.
  bool showsChip(const std::optional<DesktopWindow>& window, QRect part) {
    if (!window) return false;
    const auto path = desktop_.home() / "screen.png";
    desktop_.screenshot(path);
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
    desktop_.input().chord({key::Shift, key::Super, key::V});
    EXPECT_TRUE(waitFor([&] { return hasKeyboard(program_->panel()); }));
    return waitFor([&] { return showsChip(program_->panel(), {200, 12, 320, 44}); }, briefly);
  }
  bool translateShowsChip() {
    desktop_.input().chord({key::Control, key::Alt, key::Super, key::L});
    EXPECT_TRUE(waitFor([&] { return hasKeyboard(program_->translatePanel()); }));
    return waitFor(
        [&] {
          return showsChip(program_->translatePanel(), {200, 16, 380, 44});
        },
        briefly);
  }
  bool mainShowsChip() {
    desktop_.input().chord({key::Shift, key::Super, key::Space});
    EXPECT_TRUE(waitFor([&] { return hasKeyboard(program_->mainWindow()); }));
    const auto window = program_->mainWindow();
    return window && waitFor(
                         [&] {
                           return showsChip(window, {10, window->height - 110, 270, 80});
                         },
                         briefly);
  }
  bool hasKeyboard(const std::optional<DesktopWindow>& window) {
    return window && desktop_.windows().focused() == window->id;
  }
  void closeBy(std::uint8_t keyCode, const std::function<bool()>& isClosed) {
    desktop_.input().tap(keyCode);
    EXPECT_TRUE(waitFor(isClosed));
  }

  static constexpr auto briefly = std::chrono::milliseconds(1'500);
  int argumentCount_ = 0;
  QCoreApplication toolkit_{argumentCount_, nullptr};  // for the server's thread
  UpdateServer server_;
  UpdateFeed feed_{server_};
  VirtualDesktop desktop_;
  std::optional<ZephyxProcess> program_;
};

TEST_F(ProgramUpdateTest, AnUpdateFoundInTheBackgroundIsOnEveryScreenUntilTheUserHasSeenIt) {
  ASSERT_TRUE(program_->waitUntilReady());
  ASSERT_TRUE(waitFor([&] { return hasKeyboard(program_->mainWindow()); }));
  const TargetProgram other(desktop_, TargetProgram::Kind::Qt);
  ASSERT_TRUE(waitFor([&] { return !program_->mainWindow(); }));
  ASSERT_TRUE(waitFor([&] { return server_.requests(QStringLiteral("feed.xml")) == 1; },
                      std::chrono::seconds(20)));
  EXPECT_TRUE(holdsFor([&] { return !updateWindow() && other.isActive(); },
                       std::chrono::milliseconds(500)));

  EXPECT_TRUE(mainShowsChip());
  ASSERT_TRUE(other.activate());
  EXPECT_TRUE(translateShowsChip());
  closeBy(key::Escape, [&] { return !program_->translatePanel(); });
  EXPECT_TRUE(clipboardShowsChip());
  const auto panel = program_->panel();
  ASSERT_TRUE(panel);
  desktop_.input().click(panel->x + 440, panel->y + 34);
  ASSERT_TRUE(waitFor([&] { return hasKeyboard(updateWindow()); }));
  EXPECT_TRUE(waitFor([&] { return !program_->panel(); }));
  closeBy(key::Escape, [&] { return !updateWindow(); });

  EXPECT_FALSE(clipboardShowsChip());
  closeBy(key::Escape, [&] { return !program_->panel(); });
  EXPECT_FALSE(translateShowsChip());
  closeBy(key::Escape, [&] { return !program_->translatePanel(); });
  EXPECT_FALSE(mainShowsChip());
}

}  // namespace
}  // namespace zephyx
