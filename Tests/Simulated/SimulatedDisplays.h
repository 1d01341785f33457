#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

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
                        BytesView bytes) override;

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

  std::vector<std::shared_ptr<DisplayChannel>> externalChannels() override;
  std::optional<std::string> channelObstacle() override { return obstacle; }
  std::vector<Display> onlineDisplays() override;
  bool setTransferMaximum(std::uint32_t display, double maximum) override;

  std::optional<std::string> obstacle;
  /// Its id.
  std::uint32_t plugIn(Kind kind);
  void pullOut(std::uint32_t display);
  /// Null for a display without one.
  SimulatedDisplayChannel* channel(std::uint32_t display) const;
  /// Of a display that is plugged in; nothing before the host has set one.
  std::optional<double> transferMaximum(std::uint32_t display) const;

 private:
  struct Plugged {
    Display display;
    std::shared_ptr<SimulatedDisplayChannel> channel;
    std::optional<double> maximum;
  };

  const Plugged* find(std::uint32_t display) const;

  SimulatedDispatch& dispatch_;
  std::vector<Plugged> plugged_;
  std::uint32_t lastId_ = 0;
};

}  // namespace zephyx
