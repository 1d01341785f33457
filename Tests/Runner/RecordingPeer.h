#pragma once

#include "Platform/View.h"

namespace zephyx {

/// Hears what would be drawn or shown anew.
class RecordingPeer final : public ViewPeer {
 public:
  explicit RecordingPeer(View& view) : registration_(view.attachPeer(*this)) {}

  void frameDidChange() override { log_.push_back("frame"); }
  void childrenDidChange() override { log_.push_back("children"); }
  void propertiesDidChange() override { log_.push_back("properties"); }
  void alphaDidChange(const std::optional<Animation>& animation) override {
    log_.push_back(animation ? "alpha animated" : "alpha");
  }
  void setNeedsDisplay() override { log_.push_back("display"); }

  std::vector<std::string> take() { return std::exchange(log_, {}); }

 private:
  std::vector<std::string> log_;
  Registration registration_;
};

}  // namespace zephyx
