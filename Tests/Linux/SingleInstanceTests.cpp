#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <algorithm>
#include <fstream>
#include <future>

#include "Platform/Linux/SingleInstance.h"
#include "Tests/Desktop/TemporaryDirectory.h"

namespace zephyx {
namespace {

using Outcome = SingleInstance::Outcome;

class SingleInstanceTest : public testing::Test {
 protected:
  /// A further start, as another process would do it.
  std::future<Outcome> startAgain(const std::string& display = ":5") {
    return std::async(std::launch::async, [folder = folder_.path().string(), display] {
      return SingleInstance(folder, display).claim();
    });
  }
  Outcome outcomeOf(std::future<Outcome>& start) {
    while (start.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
      QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return start.get();
  }
  std::string folder() const { return folder_.path().string(); }

 private:
  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  TemporaryDirectory folder_;
};

TEST_F(SingleInstanceTest, FurtherStartsReachTheFirstAlsoBeforeItListens) {
  SingleInstance first(folder(), ":5");
  ASSERT_EQ(first.claim(), Outcome::first);
  auto early = startAgain();
  int reopened = 0;
  first.listen([&] { ++reopened; });
  EXPECT_EQ(outcomeOf(early), Outcome::second);
  EXPECT_EQ(reopened, 1);

  auto later = startAgain(":5.0");
  EXPECT_EQ(outcomeOf(later), Outcome::second);
  EXPECT_EQ(reopened, 2);
}

TEST_F(SingleInstanceTest, DisplaysHaveTheirOwn) {
  SingleInstance first(folder(), ":5");
  ASSERT_EQ(first.claim(), Outcome::first);
  auto other = startAgain(":6");
  EXPECT_EQ(outcomeOf(other), Outcome::first);
}

TEST_F(SingleInstanceTest, WhatAKilledHolderLeftIsNotInTheWay) {
  std::ofstream(folder() + "/com.zephyx.app-_5.lock");
  std::ofstream(folder() + "/com.zephyx.app-_5.sock");
  SingleInstance next(folder(), ":5");
  EXPECT_EQ(next.claim(), Outcome::first);
}

TEST_F(SingleInstanceTest, OneOfManySimultaneousStartsWins) {
  constexpr int count = 8;
  std::vector<std::unique_ptr<SingleInstance>> instances;
  std::vector<std::future<Outcome>> starts;
  for (int index = 0; index < count; ++index) {
    instances.push_back(std::make_unique<SingleInstance>(folder(), ":5"));
    starts.push_back(std::async(std::launch::async,
                                [instance = instances.back().get()] { return instance->claim(); }));
  }
  // The others wait for the winner's answer.
  const auto isDone = [](const auto& start) {
    return start.wait_for(std::chrono::milliseconds(1)) == std::future_status::ready;
  };
  auto winner = starts.end();
  while (winner == starts.end()) winner = std::find_if(starts.begin(), starts.end(), isDone);
  int asked = 0;
  instances[static_cast<std::size_t>(winner - starts.begin())]->listen([&] { ++asked; });
  int winners = 0;
  for (auto& start : starts) winners += outcomeOf(start) == Outcome::first ? 1 : 0;
  EXPECT_EQ(winners, 1);
  EXPECT_GT(asked, 0);
}

}  // namespace
}  // namespace zephyx
