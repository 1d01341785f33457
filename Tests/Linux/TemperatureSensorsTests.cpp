#include <gmock/gmock.h>

#include <sstream>

#include "Platform/Linux/Statistics/LinuxTemperatureSensors.h"
#include "Tests/Desktop/TemporaryDirectory.h"
#include "Tests/Linux/SensorTree.h"

namespace zephyx {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Readings = std::vector<std::pair<std::string, double>>;

// Devices that machines have beside their processors.
const std::string mainboard = "acpitz; 27800";
const std::string disk = "nvme; Composite 38850; Sensor 1 41850";
const std::string graphics = "amdgpu; edge 49000";
const std::string superIo = "nct6798; SYSTIN 33000; CPUTIN 29500";

/// A device from its name and its sensors, numbered from 1: "label reading", or one of both.
SensorTree::Files device(const std::string& text) {
  SensorTree::Files files;
  std::istringstream parts(text);
  std::string part;
  for (int number = 0; std::getline(parts >> std::ws, part, ';'); ++number) {
    const auto sensor = "temp" + std::to_string(number);
    const auto blank = part.rfind(' ');
    if (number == 0 && !part.empty()) files.emplace_back("name", part);
    if (number == 0 || part == "-") continue;
    if (blank != std::string::npos) files.emplace_back(sensor + "_label", part.substr(0, blank));
    files.emplace_back(sensor + "_input", part.substr(blank + 1));
  }
  return files;
}

class TemperatureSensorsTest : public testing::Test {
 protected:
  Readings readings() {
    Readings all;
    for (const auto& [name, celsius] : sensors_.readings()) all.emplace_back(name, celsius);
    return all;
  }

 private:
  TemporaryDirectory directory_;

 protected:
  const SensorTree tree_{directory_.path() / "hwmon"};

 private:
  LinuxTemperatureSensors sensors_{tree_.folder()};
};

TEST_F(TemperatureSensorsTest, FindsTheProcessorOfEachKindOfMachine) {
  const std::tuple<const char*, std::vector<std::string>, Readings> cases[] = {
      {"Intel laptop",
       {mainboard, disk, "iwlwifi_1; 44000",
        "coretemp; Package id 0 52000; Core 0 50000; Core 4 47000"},
       {{"PMU tdie Package id 0", 52}}},
      {"Intel server with two processors",
       {"coretemp; Package id 0 61000", "coretemp; Package id 1 57000"},
       {{"PMU tdie Package id 0", 61}, {"PMU tdie Package id 1", 57}}},
      {"old Intel desktop without a sensor for the whole die",
       {"coretemp; -; Core 0 44000; Core 1 41000"},
       {{"PMU tdie Core 0", 44}, {"PMU tdie Core 1", 41}}},
      {"AMD desktop whose fan is steered by a higher temperature",
       {disk, graphics, superIo, "k10temp; Tctl 72250; Tdie 52250; Tccd1 50000"},
       {{"PMU tdie Tdie", 52.25}}},
      {"AMD desktop of later years",
       {"k10temp; Tctl 46125; -; Tccd1 39250"},
       {{"PMU tdie Tctl", 46.125}}},
      {"AMD desktop of earlier years", {"k10temp; 18500"}, {{"PMU tdie k10temp", 18.5}}},
      {"AMD desktop with another driver",
       {disk, "zenpower; Tdie 43500; Tctl 43500"},
       {{"PMU tdie Tdie", 43.5}}},
      {"ARM board with one zone",
       {"cpu_thermal; 48312", "rp1_adc; 51000"},
       {{"PMU tdie cpu_thermal", 48.312}}},
      {"ARM board with two kinds of cores",
       {"gpu_thermal; 40000", "soc_thermal; 42000", "bigcore0_thermal; 46000",
        "littlecore_thermal_4; 44000"},
       {{"PMU tdie bigcore0_thermal", 46}, {"PMU tdie littlecore_thermal_4", 44}}},
      {"ARM board with one zone for everything",
       {"soc_thermal; 55555"},
       {{"PMU tdie soc_thermal", 55.555}}},
      {"virtual machine", {}, {}},
      {"machine whose processor has no driver", {mainboard, disk, graphics, superIo}, {}},
      {"sensors that are off or broken, which the host leaves out",
       {"k10temp; -128000", "coretemp; 0"},
       {{"PMU tdie k10temp", -128}, {"PMU tdie coretemp", 0}}},
      {"what no driver would write", {"k10temp; warm", "; 40000"}, {}},
  };
  for (const auto& [machine, devices, expected] : cases) {
    SCOPED_TRACE(machine);
    int number = 0;
    for (const auto& text : devices) {
      tree_.add("hwmon" + std::to_string(number++), device(text));
    }
    EXPECT_THAT(readings(), testing::UnorderedElementsAreArray(expected));
    EXPECT_THAT(readings(), testing::UnorderedElementsAreArray(expected));
    while (number-- > 0) tree_.remove("hwmon" + std::to_string(number));
    EXPECT_THAT(readings(), IsEmpty());
  }
}

TEST_F(TemperatureSensorsTest, FollowsASensorThatMovesToAnotherNumber) {
  tree_.add("hwmon2", device("zenpower; Tdie 40000"));
  EXPECT_THAT(readings(), ElementsAre(Pair("PMU tdie Tdie", 40)));
  tree_.add("hwmon2", device("zenpower; Tdie 45500"));
  EXPECT_THAT(readings(), ElementsAre(Pair("PMU tdie Tdie", 45.5)));
  tree_.remove("hwmon2");
  tree_.add("hwmon2", device(disk));
  tree_.add("hwmon3", device("zenpower; Tdie 47000"));
  EXPECT_THAT(readings(), ElementsAre(Pair("PMU tdie Tdie", 47)));
}

}  // namespace
}  // namespace zephyx
