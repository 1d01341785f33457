#include "Platform/Label.h"
#include "Runner/StatRingView.h"
#include "Runner/SystemMonitorMenuView.h"
#include "Tests/Runner/HostTest.h"
#include "Tests/Runner/RecordingPeer.h"

namespace zephyx {
namespace {

class SystemMonitorTest : public HostTest {
 protected:
  SystemMonitorTest() { launch(); }

  SystemMonitorMenuView& view() {
    return dynamic_cast<SystemMonitorMenuView&>(*statusItem().menu()->items().at(0)->view());
  }
  StatRingView& ring(const std::string& title) {
    for (const auto& each : view().visibleRings()) {
      if (each->title() == title) return *each;
    }
    throw std::out_of_range(title);
  }
  std::vector<double> places() {
    std::vector<double> all;
    for (const auto& each : view().visibleRings()) {
      EXPECT_EQ(each->frame().size, (Size{60, 60}));
      EXPECT_EQ(each->frame().origin.y, 12);
      all.push_back(each->frame().origin.x);
    }
    return all;
  }
  void setTemperature(double celsius) {
    desktop.temperatureSensors.sensors = {{"PMU tdie1", celsius}};
  }
};

TEST_F(SystemMonitorTest, TheCpuRingFollowsAJumpStepByStep) {
  statusItem().openMenu();
  EXPECT_EQ(ring("CPU").valueText(), "0%");
  desktop.dispatch.advance(1);
  desktop.hostStatistics.setProcessorLoad(1);
  for (const char* shown : {"35%", "58%", "73%"}) {
    desktop.dispatch.advance(1);
    EXPECT_EQ(ring("CPU").valueText(), shown);
    EXPECT_EQ(ring("CPU").accessibilityValue(), shown);
    EXPECT_EQ(ring("CPU").toolTip(), std::string("Processor load: ") + shown);
  }
  EXPECT_EQ(ring("CPU").color(), color::systemYellow);
  desktop.dispatch.advance(2);
  EXPECT_EQ(ring("CPU").color(), color::systemRed);

  const auto last = ring("CPU").valueText();
  desktop.hostStatistics.hasProcessorTicks = false;
  desktop.dispatch.advance(3);
  EXPECT_EQ(ring("CPU").valueText(), last);
}

TEST_F(SystemMonitorTest, MemoryAndDiskAreThereAtOnce) {
  const auto expectRing = [this](const char* title, const char* text, Color color) {
    EXPECT_EQ(ring(title).valueText(), text);
    EXPECT_EQ(ring(title).color(), color);
  };
  statusItem().openMenu();
  expectRing("MEM", "40%", color::systemGreen);
  expectRing("DISK", "62%", color::systemYellow);
  desktop.hostStatistics.level = 5;
  desktop.hostStatistics.volume.reset();
  desktop.dispatch.advance(1);
  expectRing("MEM", "95%", color::systemRed);
  expectRing("DISK", "0%", color::systemGreen);
}

TEST_F(SystemMonitorTest, TheFirstTemperatureAddsAFourthRingAndCentresTheRowAgain) {
  statusItem().openMenu();
  EXPECT_THAT(places(), ElementsAre(54, 130, 206));
  setTemperature(130);
  desktop.dispatch.advance(1);
  EXPECT_EQ(places().size(), 3u);
  setTemperature(72);
  desktop.dispatch.advance(1);
  EXPECT_THAT(places(), ElementsAre(16, 92, 168, 244));
  EXPECT_EQ(view().visibleRings().at(1)->title(), "TEMP");
  view().setFrame({{0, 0}, {400, 84}});
  EXPECT_THAT(places(), ElementsAre(56, 132, 208, 284));

  for (const auto& [celsius, text, color] : {std::tuple{69.4, "69°C", color::systemGreen},
                                             {72, "72°C", color::systemYellow},
                                             {90, "90°C", color::systemRed},
                                             {104.6, "105°C", color::systemRed}}) {
    SCOPED_TRACE(celsius);
    setTemperature(celsius);
    desktop.dispatch.advance(1);
    EXPECT_EQ(ring("TEMP").valueText(), text);
    EXPECT_EQ(ring("TEMP").color(), color);
  }
  EXPECT_EQ(ring("TEMP").progress(), 1);
  desktop.temperatureSensors.sensors.clear();
  desktop.dispatch.advance(1);
  EXPECT_EQ(ring("TEMP").valueText(), "105°C");
}

TEST_F(SystemMonitorTest, AHoveredRingShowsItsValueAndIsCountedOnce) {
  statusItem().openMenu();
  auto& memory = ring("MEM");
  const auto expectShown = [&](bool value) {
    EXPECT_EQ(memory.children().at(0)->alpha(), value ? 0 : 1);
    EXPECT_EQ(memory.children().at(1)->alpha(), value ? 1 : 0);
  };
  const Map event{{"name", "stat_ring_hovered"}, {"props", Map{{"ring", "mem"}}}};
  expectShown(false);
  memory.mouseEntered();
  memory.mouseEntered();
  expectShown(true);
  memory.mouseExited();
  expectShown(false);
  desktop.dispatch.settle();
  EXPECT_THAT(mainScreen().takeCalls(), ElementsAre(MethodCall{"telemetryEvent", event}));
  memory.mouseEntered();
  statusItem().cancelTrackingWithoutAnimation();
  EXPECT_FALSE(memory.isHovered());
  desktop.dispatch.settle();
  EXPECT_THAT(mainScreen().takeCalls(), ElementsAre(MethodCall{"telemetryEvent", event}));
}

TEST_F(SystemMonitorTest, NothingIsReadWhileTheMenuIsClosed) {
  int& reads = desktop.hostStatistics.reads;
  desktop.dispatch.advance(60);
  EXPECT_EQ(reads, 0);
  for (int round = 0; round < 2; ++round) {
    statusItem().openMenu();
    const auto before = std::exchange(reads, 0);
    EXPECT_GT(before, 0);
    desktop.dispatch.advance(3);
    EXPECT_EQ(reads, 9);
    statusItem().cancelTrackingWithoutAnimation();
    desktop.dispatch.advance(60);
    EXPECT_EQ(std::exchange(reads, 0), 9);
  }
}

TEST_F(SystemMonitorTest, WhatLooksTheSameIsNotDrawnAgain) {
  setTemperature(50);
  desktop.hostStatistics.setProcessorLoad(0.25);
  statusItem().openMenu();
  desktop.dispatch.advance(1);
  std::vector<std::unique_ptr<RecordingPeer>> peers;
  for (const auto& each : view().visibleRings()) {
    peers.push_back(std::make_unique<RecordingPeer>(*each));
    for (const auto& child : each->children()) {
      peers.push_back(std::make_unique<RecordingPeer>(*child));
    }
  }
  const auto changes = [&] {
    std::size_t sum = 0;
    for (const auto& peer : peers) sum += peer->take().size();
    return sum;
  };
  setTemperature(50.04);
  desktop.hostStatistics.volume->available -= 100'000;
  desktop.dispatch.advance(5);
  EXPECT_EQ(changes(), 0u);
  setTemperature(51);
  desktop.dispatch.advance(1);
  EXPECT_GT(changes(), 0u);
}

class SystemStatsSamplerTest : public testing::Test {
 protected:
  SimulatedDesktop desktop;
  SystemStatsSampler sampler{desktop.hostStatistics, desktop.temperatureSensors};
};

TEST_F(SystemStatsSamplerTest, CpuUseIsWhatHappenedSinceTheSampleBefore) {
  EXPECT_EQ(sampler.sample().cpu, std::nullopt);
  EXPECT_EQ(sampler.sample().cpu, std::nullopt) << "no tick in between";
  desktop.hostStatistics.setProcessorLoad(0.75);
  desktop.dispatch.advance(1);
  EXPECT_NEAR(sampler.sample().cpu.value(), 0.75, 0.01);
  desktop.dispatch.advance(1);
  sampler.previousTicks->busy += 1'000'000;
  EXPECT_EQ(sampler.sample().cpu, std::nullopt) << "counters fell back";
  desktop.dispatch.advance(1);
  EXPECT_NEAR(sampler.sample().cpu.value(), 0.75, 0.01);

  desktop.hostStatistics.hasProcessorTicks = false;
  EXPECT_EQ(sampler.sample().cpu, std::nullopt);
  desktop.hostStatistics.hasProcessorTicks = true;
  desktop.hostStatistics.setProcessorLoad(0);
  desktop.dispatch.advance(1);
  EXPECT_EQ(sampler.sample().cpu, 0);
}

TEST_F(SystemStatsSamplerTest, MemoryIsThePressureOrElseWhatIsInUse) {
  auto& machine = desktop.hostStatistics;
  for (const auto& [level, expected] : {std::pair(25, 0.75), {0, 1.0}, {100, 0.0}, {130, 0.0}}) {
    machine.level = level;
    EXPECT_EQ(sampler.sample().memory, expected);
  }
  machine.level.reset();
  machine.pages = MemoryPages{
      .internal = 300, .purgeable = 50, .wired = 200, .compressor = 50, .pageSize = 4096};
  for (const auto& [pages, expected] : {std::pair(1000, 0.5), {400, 1.0}, {0, 0.0}}) {
    machine.memory = static_cast<std::uint64_t>(pages) * 4096;
    EXPECT_DOUBLE_EQ(sampler.sample().memory, expected);
  }
  machine.memory = 4096;
  machine.pages.reset();
  EXPECT_EQ(sampler.sample().memory, 0);
}

TEST_F(SystemStatsSamplerTest, OnlyPlausibleReadingsFromTheDieCount) {
  const std::pair<std::vector<TemperatureReading>, std::optional<double>> cases[] = {
      {{}, std::nullopt},
      {{{"PMU tdie1", 40}, {"PMU tdie2", 50}}, 45},
      {{{"PMU tdie1", 40}, {"PMU tdie2", 0}, {"PMU tdie3", 130}, {"PMU tdie4", -128}}, 40},
      {{{"PMU tdie1", 1}, {"PMU tdie2", 125}}, std::nullopt},
      {{{"pACC MTR Temp Sensor0", 60}, {"eACC MTR Temp Sensor3", 50}, {"PMU tdev1", 90}}, 55},
      {{{"gas gauge battery", 30}, {"NAND CH0 temp", 35}, {"A PMU tdie", 40}}, std::nullopt},
  };
  for (const auto& [readings, expected] : cases) {
    desktop.temperatureSensors.sensors = readings;
    EXPECT_EQ(sampler.sample().temperature, expected);
  }
}

}  // namespace
}  // namespace zephyx
