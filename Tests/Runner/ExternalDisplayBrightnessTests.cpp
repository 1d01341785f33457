#include "Runner/ExternalDisplayBrightness.h"

#include "Runner/BrightnessMenuItemView.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

using Kind = SimulatedDisplays::Kind;

constexpr double secondsBetweenWrites = 0.05;

class ExternalDisplayBrightnessTest : public HostTest {
 protected:
  ExternalDisplayBrightness& brightness() { return ExternalDisplayBrightness::shared(); }
  std::uint32_t plugIn(Kind kind) { return desktop.displays.plugIn(kind); }
  const std::vector<SimulatedDisplayChannel::Write>& writes(std::uint32_t display) {
    return desktop.displays.channel(display)->writes();
  }
  static int luminance(const SimulatedDisplayChannel::Write& write) {
    unsigned sum = 0x6E ^ 0x51;
    for (const auto byte : write.bytes) sum ^= byte;
    EXPECT_EQ(sum, 0u) << "the checksum of the whole message";
    return write.bytes.at(3) << 8 | write.bytes.at(4);
  }
  /// The row in the menu that the user has just opened.
  BrightnessMenuItemView& openedRow() {
    statusItem().openMenu();
    return dynamic_cast<BrightnessMenuItemView&>(*statusItem().menu()->items().at(3)->view());
  }
  /// The user drags the slider through so many values within `seconds`, ending with `last`.
  void drag(Slider& slider, int count, double seconds, double last) {
    for (int left = count; left-- > 0;) {
      slider.move(left == 0 ? last : static_cast<double>(left) / count * 0.9);
      desktop.dispatch.advance(seconds / count);
    }
  }
};

TEST_F(ExternalDisplayBrightnessTest, TheBacklightCoversTheUpperPartAndThePictureTheLower) {
  const auto display = plugIn(Kind::external);
  launch();
  for (const auto& [value, stored, luminance, scale] :
       std::vector<std::tuple<double, double, int, double>>{{0, 0, 0, 0.15},
                                                            {0.15, 0.15, 0, 0.575},
                                                            {0.3, 0.3, 0, 1},
                                                            {0.307, 0.307, 1, 1},
                                                            {0.5, 0.5, 29, 1},
                                                            {0.65, 0.65, 50, 1},
                                                            {1, 1, 100, 1},
                                                            {-0.5, 0, 0, 0.15},
                                                            {7, 1, 100, 1}}) {
    SCOPED_TRACE(value);
    brightness().setBrightness(value);
    desktop.dispatch.advance(1);
    EXPECT_EQ(brightness().last(), stored);
    EXPECT_EQ(desktop.userDefaults.number("externalBrightness.v1"), stored);
    EXPECT_NEAR(desktop.displays.transferMaximum(display).value(), scale, 1e-9);
    EXPECT_EQ(this->luminance(writes(display).back()), luminance);
  }
}

TEST_F(ExternalDisplayBrightnessTest, EveryExternalDisplayGetsThePacketAndNoBuiltinPanelAnything) {
  const auto panel = plugIn(Kind::builtin);
  const auto first = plugIn(Kind::external);
  const auto second = plugIn(Kind::external);
  const auto plain = plugIn(Kind::externalWithoutChannel);
  launch();
  brightness().setBrightness(0.1);
  desktop.dispatch.advance(1);
  for (const auto display : {first, second}) {
    ASSERT_EQ(writes(display).size(), 1u);
    const auto& write = writes(display).front();
    EXPECT_EQ(write.chipAddress, 0x37u);
    EXPECT_EQ(write.dataAddress, 0x51u);
    EXPECT_THAT(write.bytes, ElementsAre(0x84, 0x03, 0x10, 0, 0, 0x10 ^ 0xB8));
  }
  for (const auto display : {first, second, plain}) {
    EXPECT_LT(desktop.displays.transferMaximum(display), 0.5);
  }
  EXPECT_EQ(desktop.displays.transferMaximum(panel), std::nullopt);
  for (const auto display : {first, second, plain}) desktop.displays.pullOut(display);
  brightness().setBrightness(1);
  EXPECT_EQ(brightness().last(), 1);
}

TEST_F(ExternalDisplayBrightnessTest, AFastDragSendsAPacketPerSlotAtMostAndTheLastValueAlways) {
  const auto display = plugIn(Kind::external);
  launch();
  drag(*openedRow().slider(), 500, 1, 0.65);
  desktop.dispatch.advance(60);
  const auto& sent = writes(display);
  ASSERT_FALSE(sent.empty());
  for (std::size_t i = 1; i < sent.size(); ++i) {
    EXPECT_GE(sent[i].time - sent[i - 1].time, secondsBetweenWrites - 1e-6);
  }
  EXPECT_EQ(luminance(sent.back()), 50);
  EXPECT_EQ(brightness().last(), 0.65);

  // Slower than the slots, every value is sent at once.
  const auto before = sent.size();
  const auto start = desktop.dispatch.mediaClock();
  drag(*openedRow().slider(), 5, 0.5, 1);
  EXPECT_EQ(sent.size(), before + 5);
  EXPECT_NEAR(sent.back().time - start, 0.4, 1e-6);
}

TEST_F(ExternalDisplayBrightnessTest, ADisplayThatFailsHangsOrGoesHoldsUpNobody) {
  const auto failing = plugIn(Kind::external);
  const auto hanging = plugIn(Kind::external);
  const auto going = plugIn(Kind::external);
  const auto good = plugIn(Kind::external);
  desktop.displays.channel(failing)->status = -5;
  desktop.displays.channel(hanging)->answerTime = 2;
  launch();
  const auto start = desktop.dispatch.mediaClock();
  double mainThreadRan = 0;
  desktop.dispatch.mainQueue().asyncAfter(0.5, [&] {
    mainThreadRan = desktop.dispatch.mediaClock() - start;
    desktop.displays.pullOut(going);
  });
  brightness().setBrightness(0.4);
  EXPECT_EQ(desktop.dispatch.mediaClock(), start);
  // While one write hangs, only the newest of the later values waits for its turn.
  for (const double value : {0.5, 0.6, 1.0}) {
    const double late = value;
    desktop.dispatch.mainQueue().asyncAfter(value,
                                            [this, late] { brightness().setBrightness(late); });
  }
  desktop.dispatch.advance(10);
  EXPECT_NEAR(mainThreadRan, 0.5, 1e-6);
  EXPECT_EQ(writes(failing).size(), 2u);
  EXPECT_EQ(writes(hanging).size(), 2u);
  ASSERT_EQ(writes(good).size(), 2u);
  EXPECT_EQ(luminance(writes(good).back()), 100);
}

TEST_F(ExternalDisplayBrightnessTest, OpeningTheMenuFindsNewDisplaysAndShowsTheLastLevel) {
  launch();
  EXPECT_EQ(openedRow().slider()->value(), 1);
  statusItem().cancelTrackingWithoutAnimation();
  const auto display = plugIn(Kind::external);
  brightness().setBrightness(0.65);
  desktop.dispatch.advance(1);
  EXPECT_THAT(writes(display), IsEmpty());

  auto& row = openedRow();
  EXPECT_EQ(row.slider()->value(), 0.65);
  EXPECT_THAT(writes(display), IsEmpty());
  row.slider()->move(1);
  desktop.dispatch.advance(1);
  EXPECT_EQ(luminance(writes(display).at(0)), 100);

  brightness().setBrightness(0.2);
  endHost();
  launch();
  EXPECT_EQ(openedRow().slider()->value(), 0.2);
}

TEST_F(ExternalDisplayBrightnessTest, TheRowSaysWhyADisplaysBacklightCannotBeSet) {
  launch();
  EXPECT_EQ(openedRow().label()->text(), BrightnessMenuItemView::title);
  statusItem().cancelTrackingWithoutAnimation();
  desktop.displays.obstacle = "Join the group.";
  EXPECT_EQ(openedRow().label()->text(), "External Monitor Brightness (picture only)");
  EXPECT_EQ(openedRow().label()->toolTip(), "Join the group.");
  statusItem().cancelTrackingWithoutAnimation();
  desktop.displays.obstacle.reset();
  EXPECT_EQ(openedRow().label()->text(), BrightnessMenuItemView::title);
}

}  // namespace
}  // namespace zephyx
