#include <benchmark/benchmark.h>

#include "Platform/Linux/Statistics/LinuxHostStatistics.h"
#include "Platform/Linux/Statistics/LinuxTemperatureSensors.h"
#include "Runner/SystemStatsSampler.h"
#include "Tests/Desktop/TemporaryDirectory.h"
#include "Tests/Linux/SensorTree.h"

// One sample of this machine's load. The sensors are files on a disk: asking a real one takes the
// time that its driver needs.

namespace zephyx {
namespace {

class Machine {
 public:
  Machine() {
    tree.add("hwmon1", {{"name", "acpitz"}, {"temp1_input", "27800"}});
    tree.add("hwmon2", {{"name", "nvme"}, {"temp1_label", "Composite"}, {"temp1_input", "38850"}});
    tree.setProcessor("52000");
  }

 private:
  TemporaryDirectory directory_;

 public:
  const SensorTree tree{directory_.path() / "hwmon"};
};

void sampleHot(benchmark::State& state) {
  const Machine machine;
  LinuxHostStatistics statistics;
  LinuxTemperatureSensors sensors(machine.tree.folder());
  SystemStatsSampler sampler(statistics, sensors);
  for (auto _ : state) benchmark::DoNotOptimize(sampler.sample());
  if (!sampler.sample().temperature) state.SkipWithError("no temperature");
}
BENCHMARK(sampleHot);

/// The first one, which opens the files.
void sampleCold(benchmark::State& state) {
  const Machine machine;
  for (auto _ : state) {
    LinuxHostStatistics statistics;
    LinuxTemperatureSensors sensors(machine.tree.folder());
    SystemStatsSampler sampler(statistics, sensors);
    benchmark::DoNotOptimize(sampler.sample());
  }
}
BENCHMARK(sampleCold);

}  // namespace
}  // namespace zephyx
