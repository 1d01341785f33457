#include <csignal>

#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {
namespace {

class ProgramPasteTest : public ProgramTest {
 protected:
  void copyAndWait(const std::string& text) {
    desktop().copy(text);
    ASSERT_TRUE(program().waitForEntry(text));
  }
  void clickFirstEntry() {
    const auto panel = program().panel().value();
    input().click(panel.centerX(), panel.y + ZephyxProcess::firstEntryY);
  }
};

// Less than the next key takes from a fast typist.
constexpr std::chrono::milliseconds shortMoment(30);

constexpr TargetProgram::Kind kinds[] = {TargetProgram::Kind::Gtk, TargetProgram::Kind::Qt,
                                         TargetProgram::Kind::Terminal};

TEST_F(ProgramPasteTest, EnterPastesIntoTheProgramTheUserCameFrom) {
  for (const auto kind : kinds) {
    SCOPED_TRACE(TargetProgram::name(kind));
    const std::string text = "picked for " + TargetProgram::name(kind);
    copyAndWait("another copy");
    copyAndWait(text);
    const TargetProgram target(desktop(), kind);
    ASSERT_TRUE(openPanel());
    input().tap(key::Return);
    EXPECT_TRUE(waitUntilPanelIsGone());
    EXPECT_TRUE(target.waitForText(text)) << target.text();
    EXPECT_TRUE(target.isActive());
  }
}

TEST_F(ProgramPasteTest, AnOlderEntryIsReachedWithTheArrowsAndPastedTwice) {
  copyAndWait("older ");
  copyAndWait("newer");
  const TargetProgram target(desktop(), TargetProgram::Kind::Qt);
  ASSERT_TRUE(openPanel());
  input().tap(key::Down);
  input().tap(key::Return);
  ASSERT_TRUE(target.waitForText("older "));
  // What the program writes itself is no new copy: the same entry is still the second one.
  ASSERT_TRUE(openPanel());
  input().tap(key::Down);
  input().tap(key::Return);
  EXPECT_TRUE(target.waitForText("older older ")) << target.text();
}

TEST_F(ProgramPasteTest, PastesWhileTheHotKeyIsStillHeldDown) {
  copyAndWait("held down");
  for (const auto kind : kinds) {
    for (const bool byMouse : {true, false}) {
      SCOPED_TRACE(TargetProgram::name(kind) + (byMouse ? ", mouse" : ", keyboard"));
      const TargetProgram target(desktop(), kind);
      for (const auto code : {key::Shift, key::Super, key::V}) input().pressKey(code);
      ASSERT_TRUE(waitFor([&] { return panelHasKeyboard(); }));
      if (byMouse) {
        clickFirstEntry();
      } else {
        // As long as the key itself is down, all keys belong to the hot key.
        input().releaseKey(key::V);
        input().tap(key::Return);
      }
      EXPECT_TRUE(waitFor([&] { return target.hasChanged(); }));
      if (byMouse) input().releaseKey(key::V);
      for (const auto code : {key::Super, key::Shift}) input().releaseKey(code);
      // Nothing stays down, or the user's next key would be a chord.
      EXPECT_TRUE(waitFor([&] { return input().pressedKeys().empty(); }, shortMoment));
      EXPECT_TRUE(target.waitForText("held down")) << target.text();
    }
  }
}

TEST_F(ProgramPasteTest, TypesNothingWhenTheTargetHasClosedMeanwhile) {
  copyAndWait("meant for a program that is gone");
  const TargetProgram bystander(desktop(), TargetProgram::Kind::Qt);
  {
    TargetProgram target(desktop(), TargetProgram::Kind::Qt);
    ASSERT_TRUE(openPanel());
    target.process().kill();
  }
  ASSERT_TRUE(program().panel());
  const auto skips = program().logCount("se OMITE el ⌘V");
  input().tap(key::Return);
  EXPECT_TRUE(program().waitForLog("se OMITE el ⌘V", skips + 1));
  EXPECT_EQ(bystander.text(), "");
}

TEST_F(ProgramPasteTest, TypesNothingWhenTheTargetNeverComesForward) {
  copyAndWait("meant for a program that stays behind");
  const TargetProgram bystander(desktop(), TargetProgram::Kind::Qt);
  const TargetProgram target(desktop(), TargetProgram::Kind::Qt);
  ASSERT_TRUE(openPanel());
  const auto skips = program().logCount("se OMITE el ⌘V");
  const auto windowManager =
      windows().processOf(windows().property32(windows().root(), "_NET_SUPPORTING_WM_CHECK").at(0));
  // A window manager that hears nothing brings nothing forward.
  kill(windowManager, SIGSTOP);
  input().tap(key::Return);
  EXPECT_TRUE(program().waitForLog("se OMITE el ⌘V", skips + 1));
  kill(windowManager, SIGCONT);
  EXPECT_EQ(target.text(), "");
  EXPECT_EQ(bystander.text(), "");
  EXPECT_TRUE(target.activate());
}

TEST_F(ProgramPasteTest, AFileAndAnImageArriveAsSuch) {
  const auto document = desktop().home() / "document.txt";
  writeFile(document, "content");
  desktop().copy("file://" + document.string() + "\r\n", "text/uri-list");
  ASSERT_TRUE(waitForNewEntries(1));
  desktop().run({"convert", "-size", "64x32", "xc:teal", (desktop().home() / "teal.png").string()});
  desktop().copy(readFile(desktop().home() / "teal.png"), "image/png");
  ASSERT_TRUE(waitForNewEntries(2));

  const TargetProgram target(desktop(), TargetProgram::Kind::Qt);
  auto pastes = program().logCount("[PasteBack] activatePasteTarget");
  ASSERT_TRUE(openPanel());
  input().tap(key::Return);
  ASSERT_TRUE(program().waitForLog("[PasteBack] activatePasteTarget", ++pastes));
  ASSERT_TRUE(waitFor([&] { return target.isActive(); }));
  const auto pasted = desktop().home() / "pasted.png";
  EXPECT_TRUE(waitFor([&] {
    writeFile(pasted, desktop().pasted("image/png"));
    return desktop().run({"identify", "-format", "%wx%h", pasted.string()}).output == "64x32";
  }));

  ASSERT_TRUE(openPanel());
  input().tap(key::Down);
  input().tap(key::Return);
  EXPECT_TRUE(waitFor([&] {
    return desktop().pasted("text/uri-list").starts_with("file://" + document.string());
  }));
}

}  // namespace
}  // namespace zephyx
