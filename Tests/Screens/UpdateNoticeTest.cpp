#include <gtest/gtest.h>

#include <QtQuick/QQuickItem>

#include "Tests/Screens/TestWorld.h"

namespace zephyx {
namespace {

/// The same on every screen.
class UpdateNoticeTest : public testing::TestWithParam<const char*> {
 protected:
  static Map available(const Value& version) { return Map{{"version", version}}; }
  QQuickItem* chip() { return qobject_cast<QQuickItem*>(world.child("update")); }

  TestWorld world{GetParam()};
};

TEST_P(UpdateNoticeTest, ANewVersionIsShownQuietlyUntilTheUserHasSeenIt) {
  ASSERT_TRUE(world.showPicture(900, 600));
  ASSERT_TRUE(world.waitForCall("updateState"));
  EXPECT_FALSE(chip()->isVisible());
  EXPECT_EQ(world.call("updateAvailable", available("2.0")), MethodReply(Value()));
  ASSERT_TRUE(waitFor([&] { return chip()->isVisible(); }));
  world.settlePicture();
  world.click(chip()->mapToScene(QPointF(chip()->width() / 2, chip()->height() / 2)));
  EXPECT_TRUE(world.waitForCall("updateCheck"));
  world.call("updateAvailable", available({}));
  EXPECT_TRUE(waitFor([&] { return !chip()->isVisible(); }));
  for (const Value& odd : {Value(), Value("2.0"), Value(Map{{"version", 2}})}) {
    EXPECT_EQ(world.call("updateAvailable", odd), MethodReply(Value()));
    EXPECT_FALSE(chip()->isVisible());
  }
}

TEST_P(UpdateNoticeTest, AScreenThatStartsLaterLearnsOfIt) {
  world.stopProgram();
  world.replies["updateState"] = Value("3.1");
  world.startProgram();
  ASSERT_TRUE(world.showPicture(560, 720));
  EXPECT_TRUE(waitFor([&] { return chip()->isVisible(); }));
}

INSTANTIATE_TEST_SUITE_P(Screens, UpdateNoticeTest,
                         testing::Values("main", "clipboardMain", "translateMain"),
                         [](const auto& screen) { return std::string(screen.param); });

}  // namespace
}  // namespace zephyx
