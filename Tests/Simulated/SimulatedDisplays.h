#pragma once

#include "Platform/Displays.h"
#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

/// A display's wire, and what the host has written to it.
class SimulatedDisplayChannel final : public DisplayChannel {
 public:
  struct Write {
    double time = 0;  ///< by the media clock
    std::uint32_t chipAddress = 0;
    std::uint32_t dataAddress = 0;
    Bytes bytes;
  };

  explicit SimulatedDisplayChannel(SimulatedDispatch& dispatch) : dispatch_(dispatch) {}

  std::int32_t writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                        BytesView bytes) override {
    dispatch_.forbidMainThread("DisplayChannel::writeI2C");
    writes_.push_back(
        {dispatch_.mediaClock(), chipAddress, dataAddress, {bytes.begin(), bytes.end()}});
    if (answerTime > 0) dispatch_.waitOnGlobalQueue(answerTime);
    return isConnected ? status : -1;
  }

  /// Every attempt, whatever came of it.
  const std::vector<Write>& writes() const { return writes_; }

  std::int32_t status = 0;  ///< what writes answer
  double answerTime = 0;    ///< seconds that a write takes
  bool isConnected = true;  ///< a display that has gone answers nothing but errors

 private:
  SimulatedDispatch& dispatch_;
  std::vector<Write> writes_;
};

/// Displays that a test plugs in and pulls out. The machine starts with none.
class SimulatedDisplays final : public Displays {
 public:
  enum class Kind { builtin, external, externalWithoutChannel };

  explicit SimulatedDisplays(SimulatedDispatch& dispatch) : dispatch_(dispatch) {}

  std::vector<std::shared_ptr<DisplayChannel>> externalChannels() override {
    dispatch_.requireMainThread("Displays::externalChannels");
    std::vector<std::shared_ptr<DisplayChannel>> channels;
    for (const auto& each : plugged_) {
      if (each.channel) channels.push_back(each.channel);
    }
    return channels;
  }
  std::optional<std::string> channelObstacle() override { return obstacle; }
  std::vector<Display> onlineDisplays() override {
    dispatch_.requireMainThread("Displays::onlineDisplays");
    std::vector<Display> displays;
    for (const auto& each : plugged_) displays.push_back(each.display);
    return displays;
  }
  bool setTransferMaximum(std::uint32_t display, double maximum) override {
    dispatch_.requireMainThread("Displays::setTransferMaximum");
    auto* plugged = find(display);
    if (plugged) plugged->maximum = maximum;
    return plugged != nullptr;
  }

  std::optional<std::string> obstacle;
  /// Its id.
  std::uint32_t plugIn(Kind kind) {
    plugged_.push_back({{++lastId_, kind == Kind::builtin}, nullptr, std::nullopt});
    if (kind == Kind::external) {
      plugged_.back().channel = std::make_shared<SimulatedDisplayChannel>(dispatch_);
    }
    return lastId_;
  }
  void pullOut(std::uint32_t display) {
    if (auto* wire = channel(display)) wire->isConnected = false;
    std::erase_if(plugged_, [&](const Plugged& each) { return each.display.id == display; });
  }
  /// Null for a display without one.
  SimulatedDisplayChannel* channel(std::uint32_t display) {
    const auto* plugged = find(display);
    return plugged ? plugged->channel.get() : nullptr;
  }
  /// Of a display that is plugged in; nothing before the host has set one.
  std::optional<double> transferMaximum(std::uint32_t display) {
    const auto* plugged = find(display);
    return plugged ? plugged->maximum : std::nullopt;
  }

 private:
  struct Plugged {
    Display display;
    std::shared_ptr<SimulatedDisplayChannel> channel;
    std::optional<double> maximum;
  };

  Plugged* find(std::uint32_t display) {
    for (auto& each : plugged_) {
      if (each.display.id == display) return &each;
    }
    return nullptr;
  }

  SimulatedDispatch& dispatch_;
  std::vector<Plugged> plugged_;
  std::uint32_t lastId_ = 0;
};

}  // namespace zephyx
