#include "Tests/Desktop/GrabbingProgram.h"
#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;

class ProgramPanelTest : public ProgramTest {
 protected:
  static void SetUpTestSuite() { startDesktop({.width = 2560}); }
};

TEST_F(ProgramPanelTest, HidesWhenAnotherWindowBecomesActiveAndOnlyThen) {
  const TargetProgram target(desktop(), TargetProgram::Kind::Qt);
  ASSERT_TRUE(openPanel());
  {
    GrabbingProgram other;
    ASSERT_TRUE(other.takeKeyboard());
    EXPECT_TRUE(holdsFor([&] { return program().panel().has_value(); }, milliseconds(400)));
  }
  EXPECT_TRUE(waitFor([&] { return panelHasKeyboard(); }));
  // A hot key held down is a grab, too.
  for (const auto code : {key::Shift, key::Super, key::V}) input().pressKey(code);
  EXPECT_TRUE(holdsFor([&] { return program().panel().has_value(); }, milliseconds(400)));
  for (const auto code : {key::V, key::Super, key::Shift}) input().releaseKey(code);

  ASSERT_TRUE(target.activate());
  EXPECT_TRUE(waitUntilPanelIsGone());
}

TEST_F(ProgramPanelTest, EscapeGivesTheFocusBack) {
  for (const auto kind : {TargetProgram::Kind::Gtk, TargetProgram::Kind::Terminal}) {
    const TargetProgram target(desktop(), kind);
    ASSERT_TRUE(openPanel());
    input().tap(key::Escape);
    ASSERT_TRUE(waitUntilPanelIsGone());
    ASSERT_TRUE(waitFor([&] { return target.isActive(); }));
    input().type("typed");
    EXPECT_TRUE(target.waitForText("typed"));
  }
}

TEST_F(ProgramPanelTest, TypingSearchesAndDeleteRemoves) {
  for (const auto* text : {"a red apple", "a green pear", "a yellow plum"}) {
    desktop().copy(text);
    ASSERT_TRUE(program().waitForEntry(text));
  }
  const TargetProgram target(desktop(), TargetProgram::Kind::Qt);
  ASSERT_TRUE(openPanel());
  input().type("apple");
  input().tap(key::Return);
  EXPECT_TRUE(target.waitForText("a red apple")) << target.text();

  ASSERT_TRUE(openPanel());
  input().tap(key::Delete);
  EXPECT_TRUE(waitFor([&] { return newEntries().size() == 2; }));
  EXPECT_EQ(newEntries().back().text, "a green pear");
}

TEST_F(ProgramPanelTest, OpensOnTheMonitorUnderThePointer) {
  desktop().splitIntoTwoMonitors();
  for (const int monitor : {1, 0, 1}) {
    input().movePointer(monitor * 1280 + 200, 300);
    ASSERT_TRUE(waitFor([&] {
      if (!openPanel()) return false;
      if (program().panel()->centerX() == monitor * 1280 + 640) return true;
      input().tap(key::Escape);
      return !waitUntilPanelIsGone();
    }));
    EXPECT_EQ(program().panel()->centerX(), monitor * 1280 + 640);
    EXPECT_NEAR(program().panel()->centerY(), 400, 20);
    input().tap(key::Escape);
    ASSERT_TRUE(waitUntilPanelIsGone());
  }
}

}  // namespace
}  // namespace zephyx
