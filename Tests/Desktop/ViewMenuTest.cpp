#include <gmock/gmock.h>

#include <QtGui/QAccessible>
#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <algorithm>
#include <utility>

#include "Tests/Desktop/ViewTest.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;

class ViewMenuTest : public ViewTest {};

TEST_P(ViewMenuTest, TheMouseWorksEachViewAndTheMenuStaysOpen) {
  openMenu();
  auto& ring = *sample().rings.at(1);
  const auto before = pixels(*shown(ring));
  pointAt(*shown(ring));
  EXPECT_TRUE(becomesTrue([&] { return ring.entered == 1; }));
  EXPECT_TRUE(becomesTrue([&] { return pixels(*shown(ring)) != before; }));
  pointAt(*shown(*sample().rings.at(2)));
  EXPECT_TRUE(becomesTrue([&] { return ring.exited == 1; }));
  EXPECT_EQ(ring.entered, 1);
  EXPECT_TRUE(becomesTrue([&] { return pixels(*shown(ring)) == before; }));

  click(*shown(*sample().lock));
  EXPECT_TRUE(becomesTrue([&] { return !sample().locks.empty(); }));
  EXPECT_THAT(sample().locks, ElementsAre(true));

  // A click beside the switch is no choice of the row.
  const auto& lock = *shown(*sample().lock);
  const auto* row = lock.parentWidget();
  pointAt(row->mapToGlobal(row->rect().center()));
  input().pressButton();
  input().releaseButton();

  const auto& slider = *shown(*sample().slider);
  const auto start = slider.mapToGlobal(slider.rect().center());
  const int step = GetParam().isMirrored ? -10 : 10;
  pointAt(start);
  input().pressButton();
  for (int i = 1; i <= 6; ++i) {
    pointAt(start + QPoint(i * step, 0));
    pass(milliseconds(20));
  }
  input().releaseButton();
  EXPECT_TRUE(becomesTrue([&] { return sample().levels.size() >= 6; }));
  EXPECT_NEAR(sample().slider->value(), 0.8, 0.06);
  EXPECT_TRUE(std::is_sorted(sample().levels.begin(), sample().levels.end()));

  click(*shown(*sample().agent));
  EXPECT_TRUE(becomesTrue([&] { return sample().agent->clicks.size() == 1; }));
  const auto* agent = shown(*sample().agent);
  pointAt(agent->mapToGlobal(QPoint(GetParam().isMirrored ? agent->width() - 70 : 70, 20)));
  input().pressButton();
  input().releaseButton();
  EXPECT_TRUE(becomesTrue([&] { return sample().agent->clicks.size() == 2; }));
  EXPECT_NEAR(sample().agent->clicks.at(1).x, 70, 1.1);
  EXPECT_NEAR(sample().agent->clicks.at(1).y, 36, 1.1);

  pass(milliseconds(100));
  EXPECT_TRUE(menuIsOpen());
  EXPECT_EQ(sample().chosen, 0);
}

TEST_P(ViewMenuTest, TheKeyboardReachesEachControlInTheOrderOfReading) {
  openMenu();
  const auto press = [&](key::Code code) {
    input().tap(code);
    pass(milliseconds(15));
  };
  press(key::Down);  // the gauges: nothing to operate
  press(key::Return);
  EXPECT_TRUE(menuIsOpen());
  press(key::Down);
  press(key::Return);
  EXPECT_TRUE(becomesTrue([&] { return sample().agent->clicks.size() == 1; }));
  EXPECT_EQ(sample().agent->clicks.at(0), (Point{sample().agent->bounds().midX(), 28}));
  press(key::Tab);
  press(key::Space);
  press(key::Return);
  EXPECT_TRUE(becomesTrue([&] { return sample().buttonClicks == 2; }));
  press(key::Down);
  press(key::Right);
  EXPECT_TRUE(becomesTrue([&] { return sample().levels.size() == 1; }));
  EXPECT_GT(GetParam().isMirrored ? 0.6 : sample().levels.at(0),
            GetParam().isMirrored ? sample().levels.at(0) : 0.6);
  press(key::Down);
  press(key::Space);
  press(key::Return);
  EXPECT_TRUE(becomesTrue([&] { return sample().locks.size() == 2; }));
  EXPECT_THAT(sample().locks, ElementsAre(true, false));
  press(key::Up);
  press(key::Up);
  press(key::Space);
  EXPECT_TRUE(becomesTrue([&] { return sample().buttonClicks == 3; }));

  // From the last view on to the plain rows, where Return chooses.
  for (int i = 0; i < 3; ++i) press(key::Down);
  EXPECT_TRUE(menuIsOpen());
  press(key::Return);
  EXPECT_TRUE(becomesTrue([&] { return sample().chosen == 1 && !menuIsOpen(); }));
  EXPECT_EQ(sample().locks.size(), 2u);
}

TEST_P(ViewMenuTest, AnOpenMenuFollowsTheViewsInIt) {
  openMenu();
  const auto height = menu()->height();
  auto& subtitle = *sample().lockSubtitle;
  subtitle.setAccessibilityLabel("subtitle");
  const auto before = pixels(*shown(subtitle));
  subtitle.setText("Locked");
  EXPECT_TRUE(becomesTrue([&] { return pixels(*shown(subtitle)) != before; }));

  // The row's contents hang from its top.
  auto& panel = *sample().agentPanel;
  const auto top = shown(*sample().agent)->mapToGlobal(QPoint()).y();
  sample().agent->setFrame({{0, 90}, {320, 56}});
  panel.setFrame({{0, 0}, {panel.frame().size.width, 146}});
  EXPECT_TRUE(becomesTrue([&] { return menu()->height() == height + 50; }));
  EXPECT_EQ(shown(*sample().agent)->mapToGlobal(QPoint()).y(), top);
  sample().agent->setFrame({{0, 40}, {320, 56}});
  panel.setFrame({{0, 0}, {panel.frame().size.width, 96}});
  EXPECT_TRUE(becomesTrue([&] { return menu()->height() == height; }));

  const auto* slider = shown(*sample().slider);
  EXPECT_EQ(sample().slider->parent()->frame().size.width, slider->parentWidget()->width());

  auto light = QPalette(QColor(0xf0, 0xf0, 0xf0), QColor(0xf6, 0xf6, 0xf6));
  const auto dark = pixels(*shown(subtitle));
  QApplication::setPalette(light);
  EXPECT_TRUE(becomesTrue([&] { return pixels(*shown(subtitle)) != dark; }));

  // A view may go inside its own callback.
  const auto* row = sample().lock->parent();
  sample().lock->onToggle = [&] {
    const auto gone = std::exchange(sample().lock, nullptr);
    gone->removeFromParent();
  };
  click(*shown(*sample().lock));
  EXPECT_TRUE(becomesTrue([&] { return row->children().size() == 2; }));
  pass(milliseconds(50));
  EXPECT_TRUE(menuIsOpen());
}

TEST_P(ViewMenuTest, AssistiveTechnologyFindsNamesRolesAndValues) {
  openMenu();
  const struct {
    const View& view;
    QAccessible::Role role;
    QString name, value;
  } cases[] = {
      {*sample().rings.at(0), QAccessible::Indicator, "CPU", "35%"},
      {*sample().agent, QAccessible::Button, "Agent usage", ""},
      {*sample().slider, QAccessible::Slider, "Brightness", "600"},
      {*sample().lock, QAccessible::CheckBox, "Keyboard lock", ""},
  };
  for (const auto& each : cases) {
    auto* found = QAccessible::queryAccessibleInterface(shown(each.view));
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->role(), each.role);
    EXPECT_EQ(found->text(QAccessible::Name), each.name);
    if (auto* value = found->valueInterface()) {
      EXPECT_EQ(value->currentValue().toString(), each.value);
    } else {
      EXPECT_EQ(found->text(QAccessible::Value), each.value);
    }
  }
  auto* agent = QAccessible::queryAccessibleInterface(shown(*sample().agent));
  agent->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(sample().agent->clicks.size(), 1u);
  EXPECT_EQ(shown(*sample().rings.at(0))->toolTip(), "CPU: 35%");
}

INSTANTIATE_TEST_SUITE_P(Views, ViewMenuTest, viewAppearances, viewAppearanceName);

}  // namespace
}  // namespace zephyx
