#pragma once

#include <algorithm>

#include "Platform/Menu.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

class StatusBarContract : public ContractTest, public MenuDelegate {
 protected:
  StatusBarContract() {
    menu_ = std::make_shared<Menu>(this);
    toggle_ = row("Show", "toggle");
    hidden_ = row("Hidden", "hidden");
    hidden_->update([](MenuItem::Properties& p) { p.isHidden = true; });
    menu_->addItem(MenuItem::separator());
    quit_ = row("Quit", "quit");
    item_ = platform().statusBar().makeStatusItem(-2);
    item_->setImage("note.text", "Zephyx");
    item_->setMenu(menu_);
  }

  void menuNeedsUpdate(Menu&) override {
    log_.push_back("needs update");
    toggle_->setTitle("Hide");
  }
  void menuWillOpen(Menu&) override { log_.push_back("will open"); }
  void menuDidClose(Menu&) override { log_.push_back("did close"); }

  bool open() {
    log_.clear();
    item_->performClick();
    return becomesTrue([&] { return desktop().openMenuRows().has_value(); });
  }
  bool hasClosed() {
    return becomesTrue([&] {
      return !desktop().openMenuRows() && !log_.empty() &&
             std::find(log_.begin(), log_.end(), "did close") != log_.end();
    });
  }

  std::shared_ptr<MenuItem> row(const std::string& title, const std::string& action) {
    auto item = std::make_shared<MenuItem>(title, action, [this, action] { chosen_ += action; });
    menu_->addItem(item);
    return item;
  }

  std::shared_ptr<Menu> menu_;
  std::shared_ptr<MenuItem> toggle_, hidden_, quit_;
  std::shared_ptr<StatusItem> item_;
  std::vector<std::string> log_;
  std::string chosen_;
};

using Rows = std::vector<std::string>;

TEST_P(StatusBarContract, OpensWithFreshRowsAndTellsTheDelegate) {
  ASSERT_TRUE(open());
  EXPECT_EQ(log_, (Rows{"needs update", "will open"}));
  EXPECT_EQ(desktop().openMenuRows(), (Rows{"Hide", "-", "Quit"}));
  desktop().dismissMenu();
  EXPECT_TRUE(hasClosed());
  EXPECT_EQ(log_, (Rows{"needs update", "will open", "did close"}));
  EXPECT_EQ(chosen_, "");
}

TEST_P(StatusBarContract, AnOpenMenuFollowsItsRows) {
  ASSERT_TRUE(open());
  quit_->setTitle("Leave");
  hidden_->update([](MenuItem::Properties& p) { p.isHidden = false; });
  EXPECT_TRUE(becomesTrue([&] {
    return desktop().openMenuRows() == Rows{"Hide", "Hidden", "-", "Leave"};
  }));
  desktop().dismissMenu();
  EXPECT_TRUE(hasClosed());
}

TEST_P(StatusBarContract, AChosenRowPerformsOnceAndClosesTheMenu) {
  for (int round = 1; round <= 2; ++round) {
    ASSERT_TRUE(open());
    desktop().chooseMenuRow("Quit");
    EXPECT_TRUE(hasClosed());
    EXPECT_TRUE(
        becomesTrue([&] { return chosen_.size() == 4u * static_cast<std::size_t>(round); }));
  }
  EXPECT_EQ(chosen_, "quitquit");
}

TEST_P(StatusBarContract, ARowThatIsDisabledIsShownAndCannotBeChosen) {
  quit_->update([](MenuItem::Properties& p) {
    p.isEnabled = false;
    p.toolTip = "Not now";
  });
  ASSERT_TRUE(open());
  EXPECT_EQ(desktop().openMenuRows(), (Rows{"Hide", "-", "Quit"}));
  desktop().chooseMenuRow("Quit");
  desktop().pass(0.1);
  EXPECT_TRUE(desktop().openMenuRows());
  desktop().dismissMenu();
  EXPECT_TRUE(hasClosed());
  EXPECT_EQ(chosen_, "");
}

TEST_P(StatusBarContract, CancellingTrackingClosesTheMenuWithoutAChoice) {
  ASSERT_TRUE(open());
  item_->cancelTrackingWithoutAnimation();
  EXPECT_TRUE(hasClosed());
  EXPECT_EQ(chosen_, "");
  EXPECT_EQ(std::count(log_.begin(), log_.end(), "did close"), 1);
  item_->cancelTrackingWithoutAnimation();
  desktop().pass(0.1);
  EXPECT_EQ(std::count(log_.begin(), log_.end(), "did close"), 1);
}

}  // namespace zephyx
