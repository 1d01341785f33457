#pragma once

#include "Platform/Displays.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

class DisplaysContract : public ContractTest {
 protected:
  Displays& displays() { return platform().displays(); }
};

TEST_P(DisplaysContract, AnExternalDisplayIsDimmedAndGetsItsPictureBack) {
  const auto online = displays().onlineDisplays();
  ASSERT_EQ(online.size(), 1u);
  EXPECT_FALSE(online.front().isBuiltin);
  EXPECT_TRUE(displays().externalChannels().empty());
  for (const double maximum : {0.15, 0.575, 1.0}) {
    EXPECT_TRUE(displays().setTransferMaximum(online.front().id, maximum));
    EXPECT_NEAR(desktop().whiteLevel(), maximum, 0.001);
  }
  EXPECT_FALSE(displays().setTransferMaximum(online.front().id + 100, 0.5));
  EXPECT_EQ(desktop().whiteLevel(), 1);
}

}  // namespace zephyx
