#pragma once

#include <string>
#include <vector>

#include "Platform/SoftwareUpdate.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

class SoftwareUpdateContract : public ContractTest, public SoftwareUpdateDelegate {
 protected:
  using Lines = std::vector<std::string>;

  SoftwareUpdate& updates() { return platform().softwareUpdate(); }
  bool isTold(const Lines& lines) {
    return becomesTrue([&] { return told_ == lines; });
  }

  std::optional<std::string> feedUrlString() override { return std::nullopt; }
  bool supportsGentleScheduledUpdateReminders() override { return true; }
  bool shouldHandleShowingScheduledUpdate(const std::string& version, bool focus) override {
    told_.push_back("found " + version + (focus ? " in focus" : " in the background"));
    return focus;
  }
  void willHandleShowingUpdate(bool handled, const std::string& version,
                               const UpdateState& state) override {
    told_.push_back((handled ? "window for " : "reminder of ") + version +
                    (state.userInitiated ? ", asked for" : ""));
  }
  void didReceiveUserAttention(const std::string& version) override {
    told_.push_back("seen " + version);
  }

  Lines told_;
};

TEST_P(SoftwareUpdateContract, AnUpdateThatTheUserAskedForIsShownAndSeen) {
  desktop().offerUpdate("2.0");
  EXPECT_FALSE(updates().unavailableReason());
  const auto checks = updates().start(*this);
  ASSERT_TRUE(checks);
  updates().checkForUpdates();
  EXPECT_TRUE(isTold({"window for 2.0, asked for", "seen 2.0"}));
}

TEST_P(SoftwareUpdateContract, AnUpdateFoundOnScheduleWaitsForTheUser) {
  desktop().offerUpdate("3.0");
  const auto checks = updates().start(*this);
  desktop().reachTimeOfUpdateCheck();
  const Lines found{"found 3.0 in the background", "reminder of 3.0"};
  EXPECT_TRUE(isTold(found));
  updates().checkForUpdates();
  EXPECT_TRUE(isTold({found[0], found[1], "seen 3.0"}));
}

TEST_P(SoftwareUpdateContract, NothingIsToldOnceTheChecksHaveEnded) {
  desktop().offerUpdate("2.0");
  {
    const auto checks = updates().start(*this);
    updates().checkForUpdates();
    told_.clear();
  }
  updates().checkForUpdates();
  desktop().pass(0.3);
  EXPECT_EQ(told_, Lines{});
}

}  // namespace zephyx
