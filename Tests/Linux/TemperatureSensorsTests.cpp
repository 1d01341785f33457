#include <gmock/gmock.h>

#include <map>

#include "Platform/Linux/Statistics/LinuxTemperatureSensors.h"
#include "Tests/Desktop/TemporaryDirectory.h"
#include "Tests/Linux/SensorTree.h"

namespace zephyx {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;
using Readings = std::vector<std::pair<std::string, double>>;

// Devices that machines have beside their processors.
const SensorTree::Files mainboard{{"name", "acpitz"}, {"temp1_input", "27800"}};
const SensorTree::Files disk{{"name", "nvme"},
                             {"temp1_label", "Composite"},
                             {"temp1_input", "38850"},
                             {"temp2_label", "Sensor 1"},
                             {"temp2_input", "41850"}};
const SensorTree::Files graphics{
    {"name", "amdgpu"}, {"temp1_label", "edge"}, {"temp1_input", "49000"}};
const SensorTree::Files superIo{{"name", "nct6798"},
                                {"temp1_label", "SYSTIN"},
                                {"temp1_input", "33000"},
                                {"temp2_label", "CPUTIN"},
                                {"temp2_input", "29500"}};
const SensorTree::Files wireless{{"name", "iwlwifi_1"}, {"temp1_input", "44000"}};

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
  const struct {
    const char* machine;
    std::map<std::string, SensorTree::Files> devices;
    Readings expected;
  } cases[] = {
      {"Intel laptop",
       {{"hwmon0", mainboard},
        {"hwmon1", disk},
        {"hwmon4", wireless},
        {"hwmon5",
         {{"name", "coretemp"},
          {"temp1_label", "Package id 0"},
          {"temp1_input", "52000"},
          {"temp1_max", "100000"},
          {"temp1_crit_alarm", "0"},
          {"temp2_label", "Core 0"},
          {"temp2_input", "50000"},
          {"temp3_label", "Core 4"},
          {"temp3_input", "47000"}}}},
       {{"PMU tdie Package id 0", 52}}},
      {"Intel server with two processors",
       {{"hwmon0",
         {{"name", "coretemp"}, {"temp1_label", "Package id 0"}, {"temp1_input", "61000"}}},
        {"hwmon1",
         {{"name", "coretemp"}, {"temp1_label", "Package id 1"}, {"temp1_input", "57000"}}}},
       {{"PMU tdie Package id 0", 61}, {"PMU tdie Package id 1", 57}}},
      {"old Intel desktop without a sensor for the whole die",
       {{"hwmon0",
         {{"name", "coretemp"},
          {"temp2_label", "Core 0"},
          {"temp2_input", "44000"},
          {"temp3_label", "Core 1"},
          {"temp3_input", "41000"}}}},
       {{"PMU tdie Core 0", 44}, {"PMU tdie Core 1", 41}}},
      {"AMD desktop whose fan is steered by a higher temperature",
       {{"hwmon0", disk},
        {"hwmon1", graphics},
        {"hwmon2", superIo},
        {"hwmon3",
         {{"name", "k10temp"},
          {"temp1_label", "Tctl"},
          {"temp1_input", "72250"},
          {"temp2_label", "Tdie"},
          {"temp2_input", "52250"},
          {"temp3_label", "Tccd1"},
          {"temp3_input", "50000"}}}},
       {{"PMU tdie Tdie", 52.25}}},
      {"AMD desktop of later years",
       {{"hwmon2",
         {{"name", "k10temp"},
          {"temp1_label", "Tctl"},
          {"temp1_input", "46125"},
          {"temp3_label", "Tccd1"},
          {"temp3_input", "39250"}}}},
       {{"PMU tdie Tctl", 46.125}}},
      {"AMD desktop of earlier years",
       {{"hwmon0", {{"name", "k10temp"}, {"temp1_input", "18500"}, {"temp1_max", "70000"}}}},
       {{"PMU tdie k10temp", 18.5}}},
      {"AMD desktop with another driver",
       {{"hwmon0", disk},
        {"hwmon1",
         {{"name", "zenpower"},
          {"temp1_label", "Tdie"},
          {"temp1_input", "43500"},
          {"temp2_label", "Tctl"},
          {"temp2_input", "43500"},
          {"in1_label", "SVI2_Core"},
          {"in1_input", "1031"}}}},
       {{"PMU tdie Tdie", 43.5}}},
      {"ARM board with one zone",
       {{"hwmon0", {{"name", "cpu_thermal"}, {"temp1_input", "48312"}}},
        {"hwmon1", {{"name", "rp1_adc"}, {"temp1_input", "51000"}}}},
       {{"PMU tdie cpu_thermal", 48.312}}},
      {"ARM board with two kinds of cores",
       {{"hwmon0", {{"name", "gpu_thermal"}, {"temp1_input", "40000"}}},
        {"hwmon1", {{"name", "soc_thermal"}, {"temp1_input", "42000"}}},
        {"hwmon2", {{"name", "bigcore0_thermal"}, {"temp1_input", "46000"}}},
        {"hwmon3", {{"name", "littlecore_thermal_4"}, {"temp1_input", "44000"}}}},
       {{"PMU tdie bigcore0_thermal", 46}, {"PMU tdie littlecore_thermal_4", 44}}},
      {"ARM board with one zone for everything",
       {{"hwmon0", {{"name", "soc_thermal"}, {"temp1_input", "55555"}}}},
       {{"PMU tdie soc_thermal", 55.555}}},
      {"virtual machine", {}, {}},
      {"machine whose processor has no driver",
       {{"hwmon0", mainboard}, {"hwmon1", disk}, {"hwmon2", graphics}, {"hwmon3", superIo}},
       {}},
      {"sensors that are off or broken, which the host leaves out",
       {{"hwmon0", {{"name", "k10temp"}, {"temp1_input", "-128000"}}},
        {"hwmon1", {{"name", "coretemp"}, {"temp1_input", "0"}}}},
       {{"PMU tdie k10temp", -128}, {"PMU tdie coretemp", 0}}},
      {"what no driver would write",
       {{"hwmon0", {{"name", "k10temp"}, {"temp1_input", "warm"}}},
        {"hwmon1", {{"name", ""}, {"temp1_input", "40000"}}},
        {"hwmon2", {{"temp1_input", "40000"}}}},
       {}},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.machine);
    for (const auto& [device, files] : each.devices) tree_.add(device, files);
    EXPECT_THAT(readings(), testing::UnorderedElementsAreArray(each.expected));
    EXPECT_THAT(readings(), testing::UnorderedElementsAreArray(each.expected));
    for (const auto& [device, files] : each.devices) tree_.remove(device);
    EXPECT_THAT(readings(), IsEmpty());
  }
}

TEST_F(TemperatureSensorsTest, FollowsASensorThatMovesToAnotherNumber) {
  const auto processor = [](const char* thousandths) {
    return SensorTree::Files{
        {"name", "zenpower"}, {"temp1_label", "Tdie"}, {"temp1_input", thousandths}};
  };
  tree_.add("hwmon2", processor("40000"));
  EXPECT_THAT(readings(), ElementsAre(Pair("PMU tdie Tdie", 40)));
  tree_.add("hwmon2", processor("45500"));
  EXPECT_THAT(readings(), ElementsAre(Pair("PMU tdie Tdie", 45.5)));
  tree_.remove("hwmon2");
  tree_.add("hwmon2", disk);
  tree_.add("hwmon3", processor("47000"));
  EXPECT_THAT(readings(), ElementsAre(Pair("PMU tdie Tdie", 47)));
}

}  // namespace
}  // namespace zephyx
