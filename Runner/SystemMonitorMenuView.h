#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "Platform/Registration.h"
#include "Platform/View.h"
#include "Runner/SystemStatsSampler.h"

namespace zephyx {

class Dispatch;
class StatRingView;

/// A menu row with a ring for each measure of the machine's load, refreshed once a second while the
/// menu is open and not at all while it is closed. Main thread.
class SystemMonitorMenuView final : public View {
 public:
  SystemMonitorMenuView(Dispatch& dispatch, HostStatistics& statistics,
                        TemperatureSensors& sensors);

  void startMonitoring();
  void stopMonitoring();

  /// From where lines begin. The temperature's is left out until there is a reading.
  std::vector<std::shared_ptr<StatRingView>> visibleRings() const;

 protected:
  void layout() override;

 private:
  void refresh();

  Dispatch& dispatch_;
  SystemStatsSampler sampler_;
  std::optional<double> smoothedCpu_;
  std::shared_ptr<StatRingView> cpuRing_;
  std::shared_ptr<StatRingView> tempRing_;
  std::shared_ptr<StatRingView> memRing_;
  std::shared_ptr<StatRingView> diskRing_;
  Registration refreshTimer_;
};

}  // namespace zephyx
