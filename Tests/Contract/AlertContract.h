#pragma once

#include "Platform/Alert.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

class AlertContract : public ContractTest {
 protected:
  /// Asks; the answer arrives in `answers_`.
  void ask(const Alert& alert) {
    platform().alerts().show(alert, [this](std::size_t button) { answers_.push_back(button); });
    EXPECT_TRUE(answers_.empty());
    EXPECT_TRUE(becomesTrue([&] { return desktop().shownAlert() == alert; }));
  }
  /// The question goes with its one answer.
  void expectAnswer(std::size_t button) {
    EXPECT_TRUE(becomesTrue([&] { return !answers_.empty() && !desktop().shownAlert(); }));
    desktop().pass(0.05);
    EXPECT_EQ(answers_, std::vector<std::size_t>{button});
    answers_.clear();
  }

  const Alert alert_{"Forget & go?",
                     "A text that is long enough to need more than one line of the window, which "
                     "has to show all of it.",
                     {"Forget", "Save & Go", "Not Now"}};
  std::vector<std::size_t> answers_;
};

TEST_P(AlertContract, EachButtonAnswersWithItsIndex) {
  for (std::size_t button = 0; button < alert_.buttons.size(); ++button) {
    ask(alert_);
    desktop().clickAlertButton(alert_.buttons[button]);
    expectAnswer(button);
  }
}

TEST_P(AlertContract, TakesTheKeyboardReturnIsTheFirstButtonAndEscapeTheLast) {
  constexpr std::uint16_t returnKey = 36;
  constexpr std::uint16_t escape = 53;
  desktop().startOtherApplication();
  ask(alert_);
  desktop().pressKey(returnKey, 0);
  expectAnswer(0);
  desktop().bringOtherApplicationToFront();
  ask(alert_);
  desktop().pressKey(escape, 0);
  expectAnswer(2);
  EXPECT_EQ(desktop().otherApplicationText(), "");
}

TEST_P(AlertContract, OneMayFollowTheOtherInsideAnAnswer) {
  platform().alerts().show({"First", "", {"Next"}}, [this](std::size_t) { ask(alert_); });
  ASSERT_TRUE(becomesTrue([&] { return desktop().shownAlert().has_value(); }));
  desktop().clickAlertButton("Next");
  ASSERT_TRUE(becomesTrue([&] { return desktop().shownAlert() == alert_; }));
  desktop().clickAlertButton("Not Now");
  expectAnswer(2);
}

}  // namespace zephyx
