#pragma once

#include <atomic>
#include <string>

#include "Platform/Dispatch.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

class DispatchContract : public ContractTest {
 protected:
  Dispatch& dispatch() { return platform().dispatch(); }
};

TEST_P(DispatchContract, MainBlocksRunLaterInOrderOnTheMainThread) {
  std::string log;
  bool onMain = true;
  for (const char* name : {"a", "b", "c"}) {
    dispatch().mainQueue().async([&log, &onMain, this, name] {
      log += name;
      onMain = onMain && dispatch().isMainThread();
      if (log == "a") dispatch().mainQueue().async([&log] { log += "d"; });
    });
  }
  EXPECT_EQ(log, "");
  EXPECT_TRUE(becomesTrue([&] { return log.size() == 4; }));
  EXPECT_EQ(log, "abcd");
  EXPECT_TRUE(onMain);
}

TEST_P(DispatchContract, DelayedBlocksRunInTheOrderInWhichTheyBecomeDueAndNoSooner) {
  std::string log;
  const double start = dispatch().wallClock();
  double late = 0;
  dispatch().mainQueue().asyncAfter(0.3, [&] {
    log += "late";
    late = dispatch().wallClock() - start;
  });
  dispatch().mainQueue().asyncAfter(0.1, [&] { log += "soon "; });
  dispatch().mainQueue().async([&] { log += "now "; });
  EXPECT_TRUE(becomesTrue([&] { return late > 0; }));
  EXPECT_EQ(log, "now soon late");
  EXPECT_GE(late, 0.299);
}

TEST_P(DispatchContract, GlobalBlocksRunOffTheMainThreadAndComeBack) {
  std::atomic<bool> ran{false};
  std::atomic<bool> wasMain{true};
  bool cameBack = false;
  dispatch().globalQueue().async([&] {
    wasMain = dispatch().isMainThread();
    ran = true;
    dispatch().mainQueue().async([&] { cameBack = dispatch().isMainThread(); });
  });
  EXPECT_TRUE(becomesTrue([&] { return cameBack; }));
  EXPECT_TRUE(ran);
  EXPECT_FALSE(wasMain);
}

TEST_P(DispatchContract, ASerialQueueRunsOneBlockAtATimeInOrderOffTheMainThread) {
  auto& queue = dispatch().serialQueue("serial.contract", QualityOfService::utility);
  EXPECT_EQ(&dispatch().serialQueue("serial.contract", QualityOfService::utility), &queue);
  constexpr int count = 200;
  std::atomic<int> running{0};
  std::atomic<int> ended{0};
  std::atomic<bool> isInOrder{true};
  std::atomic<bool> wasMain{false};
  for (int index = 0; index < count; ++index) {
    queue.async([&, index] {
      isInOrder = isInOrder && running++ == 0 && ended == index;
      wasMain = wasMain || dispatch().isMainThread();
      --running;
      ++ended;
    });
  }
  std::atomic<bool> ranLate{false};
  queue.asyncAfter(0.05, [&] { ranLate = ended == count; });
  EXPECT_TRUE(becomesTrue([&] { return ended == count && ranLate; }));
  EXPECT_TRUE(isInOrder);
  EXPECT_FALSE(wasMain);
}

TEST_P(DispatchContract, ADelayedBlockOfAnotherThreadDoesNotBeginOnceItIsTakenBack) {
  auto& queue = dispatch().serialQueue("cancel.contract", QualityOfService::userInitiated);
  std::atomic<bool> hasBegun{false};
  std::atomic<bool> hasEnded{false};
  auto registration = scheduleOnce(queue, 0.05, [&] { hasBegun = true; });
  registration = scheduleOnce(queue, 0.1, [&] { hasEnded = true; });
  EXPECT_TRUE(becomesTrue([&] { return hasEnded.load(); }));
  EXPECT_FALSE(hasBegun);
}

TEST_P(DispatchContract, TheMediaClockCountsSeconds) {
  const double start = dispatch().mediaClock();
  double passed = 0;
  dispatch().mainQueue().asyncAfter(0.2, [&] { passed = dispatch().mediaClock() - start; });
  EXPECT_TRUE(becomesTrue([&] { return passed > 0; }));
  EXPECT_GE(passed, 0.199);
  EXPECT_LT(passed, 4);
}

TEST_P(DispatchContract, TimersRepeatUntilDroppedAlsoFromInside) {
  int outer = 0;
  int inner = 0;
  auto timer = dispatch().scheduleRepeatingTimer(0.05, [&] { ++outer; });
  Registration selfDropping;
  selfDropping = dispatch().scheduleRepeatingTimer(0.05, [&] {
    if (++inner == 2) selfDropping.reset();
  });
  EXPECT_TRUE(becomesTrue([&] { return outer >= 4 && inner >= 2; }));
  timer.reset();
  const int stopped = outer;
  desktop().pass(0.3);
  EXPECT_EQ(outer, stopped);
  EXPECT_EQ(inner, 2);
}

}  // namespace zephyx
