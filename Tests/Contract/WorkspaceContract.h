#pragma once

#include "Platform/Application.h"
#include "Platform/Window.h"
#include "Platform/Workspace.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

/// The application in front, and bringing one there.
class WorkspaceContract : public ContractTest {
 protected:
  Workspace& workspace() { return platform().workspace(); }

  std::shared_ptr<RunningApplication> meetOtherApplication() {
    desktop().startOtherApplication();
    std::shared_ptr<RunningApplication> met;
    becomesTrue([&] { return (met = workspace().frontmostApplication()) && !isHost(*met); });
    return met;
  }

  bool isHost(const RunningApplication& application) {
    return application.bundleIdentifier() == platform().application().bundleIdentifier();
  }

  void bringHostToFront() {
    window_ = platform().application().makeWindow(
        {.kind = WindowKind::panel, .contentRect = {{100, 100}, {300, 200}}});
    window_->makeKeyAndOrderFront();
    platform().application().activateIgnoringOtherApps();
    ASSERT_TRUE(becomesTrue([&] { return window_->isKeyWindow(); }));
  }

  bool activate(RunningApplication& application) {
    return workspace().usesCooperativeActivation() ? application.activateCooperatively()
                                                   : application.activateIgnoringOtherApps();
  }

  std::shared_ptr<Window> window_;
};

TEST_P(WorkspaceContract, KnowsTheApplicationInFront) {
  const auto other = meetOtherApplication();
  ASSERT_TRUE(other);
  EXPECT_FALSE(other->bundleIdentifier().empty());
  EXPECT_FALSE(other->localizedName().empty());
  EXPECT_TRUE(other->isActive());

  bringHostToFront();
  std::shared_ptr<RunningApplication> host;
  ASSERT_TRUE(becomesTrue([&] {
    host = workspace().frontmostApplication();
    return host && isHost(*host);
  }));
  EXPECT_TRUE(host->isActive());
  EXPECT_FALSE(other->isActive());
}

TEST_P(WorkspaceContract, ActivationTakesEffectAfterTheRequest) {
  const auto other = meetOtherApplication();
  ASSERT_TRUE(other);
  bringHostToFront();
  EXPECT_TRUE(activate(*other));
  EXPECT_TRUE(becomesTrue([&] { return other->isActive(); }));
  EXPECT_TRUE(becomesTrue([&] { return !window_->isKeyWindow(); }));
  desktop().pressKey(0, 0);
  EXPECT_TRUE(becomesTrue([&] { return desktop().otherApplicationText() == "a"; }));
}

TEST_P(WorkspaceContract, AnApplicationThatHasEndedIsNotActiveAndDoesNoHarm) {
  const auto other = meetOtherApplication();
  ASSERT_TRUE(other);
  bringHostToFront();
  desktop().quitOtherApplication();
  activate(*other);
  desktop().pass(0.3);
  EXPECT_FALSE(other->isActive());
  EXPECT_FALSE(other->bundleIdentifier().empty());
}

}  // namespace zephyx
