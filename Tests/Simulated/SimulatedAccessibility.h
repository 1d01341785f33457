#pragma once

#include <utility>

#include "Platform/Accessibility.h"

namespace zephyx {

class SimulatedAccessibility final : public Accessibility {
 public:
  bool isProcessTrusted() const override { return isTrusted_; }
  bool isProcessTrustedWithPrompt() override {
    if (!isTrusted_) ++promptCount_;
    return isTrusted_;
  }

  std::optional<std::string> obstacle() const override { return obstacle_; }

  /// Of a system on which the user cannot give the permission.
  void setObstacle(std::string obstacle) {
    isTrusted_ = false;
    obstacle_ = std::move(obstacle);
  }
  /// The user's own switch; on at first.
  void setTrusted(bool isTrusted) { isTrusted_ = isTrusted; }
  /// The permission stays listed but has no effect: typed events are dropped.
  void killGrant() { grantWorks_ = false; }
  bool eventsArrive() const { return isTrusted_ && grantWorks_; }
  int promptCount() const { return promptCount_; }

 private:
  bool isTrusted_ = true;
  bool grantWorks_ = true;
  int promptCount_ = 0;
  std::optional<std::string> obstacle_;
};

}  // namespace zephyx
