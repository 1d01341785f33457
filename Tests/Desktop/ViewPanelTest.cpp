#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <algorithm>

#include "Platform/Application.h"
#include "Platform/Canvas.h"
#include "Tests/Desktop/ViewTest.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;

class ClickedView final : public View {
 public:
  ClickedView() { setAcceptsClicks(true); }
  void clicked(Point position) override { clicks.push_back(position); }

  std::vector<Point> clicks;
};

class DarkView final : public View {
 public:
  void draw(Canvas& canvas) override {
    canvas.fillRoundedRect(bounds(), 18, color::black.withAlpha(0.78));
  }
};

class ViewPanelTest : public ViewTest {
 protected:
  static WindowConfiguration headsUp(Rect frame) {
    return {.kind = WindowKind::panel,
            .contentRect = frame,
            .level = windowLevel::status,
            .transparentBackground = true,
            .hasShadow = false,
            .ignoresMouseEvents = true,
            .canBecomeKey = false,
            .canBecomeMain = false};
  }

  /// The screen's colour at a place in the host's coordinates.
  QColor colorAt(Point place) {
    auto* screen = QGuiApplication::primaryScreen();
    const int y = static_cast<int>(screen->geometry().height() - place.y);
    return screen->grabWindow(0, static_cast<int>(place.x), y, 1, 1).toImage().pixelColor(0, 0);
  }
};

TEST_P(ViewPanelTest, AHeadsUpPanelShowsItsViewsAndLetsTheMouseThrough) {
  auto& application = platform().application();
  const auto below =
      application.makeWindow({.kind = WindowKind::window, .contentRect = {{100, 100}, {400, 300}}});
  auto target = std::make_shared<ClickedView>();
  below->setContentView(target);
  EXPECT_EQ(target->frame().size, (Size{400, 300}));
  below->makeKeyAndOrderFront();
  ASSERT_TRUE(runUntil([&] { return below->isKeyWindow(); }));

  const Rect frame{{150, 150}, {320, 120}};
  const auto panel = application.makeWindow(headsUp(frame));
  const auto view = std::make_shared<DarkView>();
  panel->setContentView(view);
  EXPECT_EQ(view->frame().size, frame.size);
  view->setAlpha(0);
  panel->orderFrontRegardless();
  const auto isOnTheScreen = [&](const Window& window) {
    const auto all = desktop().windows().viewable();
    return std::any_of(all.begin(), all.end(), [&](const DesktopWindow& each) {
      return each.width == window.frame().size.width * GetParam().scale;
    });
  };
  ASSERT_TRUE(runUntil([&] { return isOnTheScreen(*panel); }));
  const Point middle{frame.midX(), frame.origin.y + 100};
  ASSERT_TRUE(runUntil([&] { return colorAt(middle).lightness() > 15; }));
  const auto uncovered = colorAt(middle);
  view->setAlpha(1, Animation{.seconds = 0.2});
  EXPECT_TRUE(runUntil([&] { return colorAt(middle).lightness() < uncovered.lightness() / 2; }));
  EXPECT_TRUE(below->isKeyWindow());

  // A view's places are those of the screen, whichever way lines run.
  clickAt(QPoint(170, 600 - static_cast<int>(middle.y)));
  ASSERT_TRUE(runUntil([&] { return target->clicks.size() == 1; }));
  EXPECT_NEAR(target->clicks[0].x, GetParam().isMirrored ? 330 : 70, 1.1);
  EXPECT_NEAR(target->clicks[0].y, middle.y - 100, 1.1);

  view->setAlpha(0, Animation{.seconds = 0.1});
  EXPECT_TRUE(runUntil([&] { return colorAt(middle).lightness() > 15; }));
  panel->orderOut();
  EXPECT_TRUE(runUntil([&] { return !isOnTheScreen(*panel); }));
  panel->setContentView(nullptr);
}

INSTANTIATE_TEST_SUITE_P(Views, ViewPanelTest, viewAppearances, viewAppearanceName);

}  // namespace
}  // namespace zephyx
