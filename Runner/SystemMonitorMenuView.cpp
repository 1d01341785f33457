#include "Runner/SystemMonitorMenuView.h"

#include <cmath>
#include <string>

#include "Platform/Dispatch.h"
#include "Runner/StatRingView.h"

namespace zephyx {
namespace {

constexpr Size rowSize{320, 84};
constexpr double ringSide = 60;
constexpr double spacing = 16;
constexpr double refreshInterval = 1.0;
/// How much of a jump the CPU's ring follows in one refresh.
constexpr double smoothing = 0.35;
constexpr double fullTemperature = 100;  // °C

StatRingView::ColorProvider thresholds(double yellow, double red) {
  return [=](double progress) {
    return progress < yellow ? color::systemGreen
           : progress < red  ? color::systemYellow
                             : color::systemRed;
  };
}

}  // namespace

SystemMonitorMenuView::SystemMonitorMenuView(Dispatch& dispatch, HostStatistics& statistics,
                                             TemperatureSensors& sensors)
    : View({{0, 0}, rowSize}),
      dispatch_(dispatch),
      sampler_(statistics, sensors),
      cpuRing_(
          std::make_shared<StatRingView>("CPU", "Processor load", "cpu", thresholds(0.6, 0.8))),
      tempRing_(std::make_shared<StatRingView>("TEMP", "Processor temperature", "thermometer",
                                               thresholds(0.7, 0.9))),
      memRing_(std::make_shared<StatRingView>("MEM", "Memory in use", "memorychip",
                                              thresholds(0.6, 0.8))),
      diskRing_(std::make_shared<StatRingView>("DISK", "Disk space in use", "internaldrive",
                                               thresholds(0.6, 0.8))) {
  setAccessibilityLabel("System monitor");
  tempRing_->setHidden(true);
  for (const auto& ring : {cpuRing_, tempRing_, memRing_, diskRing_}) addChild(ring);
  relayout();
}

void SystemMonitorMenuView::startMonitoring() {
  sampler_.previousTicks = sampler_.readCpuTicks();
  refresh();
  refreshTimer_ = dispatch_.scheduleRepeatingTimer(refreshInterval, [this] { refresh(); });
}

void SystemMonitorMenuView::stopMonitoring() {
  refreshTimer_.reset();
  for (const auto& ring : visibleRings()) ring->setHovered(false);
}

void SystemMonitorMenuView::refresh() {
  const auto snapshot = sampler_.sample();
  if (snapshot.cpu) {
    const auto before = smoothedCpu_.value_or(*snapshot.cpu);
    smoothedCpu_ = before + (*snapshot.cpu - before) * smoothing;
    cpuRing_->setProgress(*smoothedCpu_);
  }
  memRing_->setProgress(snapshot.memory);
  diskRing_->setProgress(snapshot.disk);
  if (!snapshot.temperature) return;
  tempRing_->setProgress(*snapshot.temperature / fullTemperature,
                         std::to_string(std::lround(*snapshot.temperature)) + "°C");
  if (!tempRing_->isHidden()) return;
  tempRing_->setHidden(false);
  relayout();
}

std::vector<std::shared_ptr<StatRingView>> SystemMonitorMenuView::visibleRings() const {
  if (tempRing_->isHidden()) return {cpuRing_, memRing_, diskRing_};
  return {cpuRing_, tempRing_, memRing_, diskRing_};
}

void SystemMonitorMenuView::layout() {
  const auto rings = visibleRings();
  const auto count = static_cast<double>(rings.size());
  const auto width = count * ringSide + (count - 1) * spacing;
  Point origin{(bounds().size.width - width) / 2, (bounds().size.height - ringSide) / 2};
  for (const auto& ring : rings) {
    ring->setFrame({origin, {ringSide, ringSide}});
    origin.x += ringSide + spacing;
  }
}

}  // namespace zephyx
