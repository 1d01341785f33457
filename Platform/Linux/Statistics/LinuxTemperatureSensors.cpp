#include "Platform/Linux/Statistics/LinuxTemperatureSensors.h"

#include <dirent.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>

namespace zephyx {
namespace {

constexpr const char* folderVariable = "ZEPHYX_HWMON";
constexpr const char* deviceFolder = "/sys/class/hwmon";
/// How the host tells a sensor on the processor's die from others.
constexpr const char* dieSensor = "PMU tdie";
constexpr double perDegree = 1000;

struct Rank {
  std::string_view beginning;
  std::string_view part;
  int value;  ///< what is lower is better
};

/// The drivers of processors' own sensors, then the thermal zones of boards, where the zone of the
/// whole chip stands in for those of its cores. Devices are known by name: their numbers change
/// from one start to the next, and newer kernels put the number of a zone behind its name.
constexpr Rank devices[] = {
    {"coretemp", "", 0},        {"k10temp", "", 0},           {"zenpower", "", 0},
    {"k8temp", "", 0},          {"via_cputemp", "", 0},       {"cpu", "thermal", 1},
    {"bigcore", "thermal", 1},  {"littlecore", "thermal", 1}, {"soc_thermal", "", 2},
    {"package_thermal", "", 2},
};

/// The whole die before a part of it; a measured temperature before one that steers the fan, which
/// can be some degrees too high.
constexpr Rank labels[] = {
    {"Package id", "", 0}, {"Physical id", "", 0}, {"Tdie", "", 0},
    {"Tctl", "", 1},       {"Core ", "", 1},       {"Tccd", "", 2},
};
constexpr int unlabelled = 1;

template <std::size_t size>
std::optional<int> rankOf(std::string_view name, const Rank (&ranks)[size]) {
  const auto found = std::find_if(std::begin(ranks), std::end(ranks), [&](const Rank& each) {
    return name.starts_with(each.beginning) && name.find(each.part) != std::string_view::npos;
  });
  return found == std::end(ranks) ? std::nullopt : std::optional(found->value);
}

std::vector<std::string> namesIn(const std::string& folder) {
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
  std::vector<std::string> names;
  while (const auto* entry = entries ? readdir(entries.get()) : nullptr) {
    if (entry->d_name[0] != '.') names.emplace_back(entry->d_name);
  }
  return names;
}

std::string lineOf(const std::string& path) {
  char buffer[64];
  const auto text = KernelFile(path).read(buffer);
  return std::string(text.substr(0, text.find('\n')));
}

/// Those of the best rank among what is offered.
template <typename Kept>
class Best {
 public:
  void offer(int rank, Kept kept) {
    if (!kept_.empty() && rank > rank_) return;
    if (rank < rank_) kept_.clear();
    rank_ = rank;
    kept_.push_back(std::move(kept));
  }
  std::vector<Kept>& all() { return kept_; }

 private:
  int rank_ = 0;
  std::vector<Kept> kept_;
};

}  // namespace

LinuxTemperatureSensors::LinuxTemperatureSensors(std::string devicesFolder)
    : devicesFolder_(std::move(devicesFolder)) {}

std::string LinuxTemperatureSensors::systemFolder() {
  const char* other = std::getenv(folderVariable);
  return other && *other ? other : deviceFolder;
}

std::vector<TemperatureReading> LinuxTemperatureSensors::readings() {
  std::vector<TemperatureReading> readings;
  readings.reserve(sensors_.size());
  // Devices come and go with their drivers and get other numbers. The files of one that is gone
  // cannot be read any more.
  if (sensors_.empty() || !read(readings)) {
    findSensors();
    readings.clear();
    read(readings);
  }
  return readings;
}

void LinuxTemperatureSensors::findSensors() {
  Best<std::string> processors;
  for (const auto& device : namesIn(devicesFolder_)) {
    const auto folder = devicesFolder_ + "/" + device + "/";
    const auto rank = rankOf(lineOf(folder + "name"), devices);
    if (rank) processors.offer(*rank, folder);
  }
  sensors_.clear();
  for (const auto& folder : processors.all()) addSensors(folder);
}

void LinuxTemperatureSensors::addSensors(const std::string& folder) {
  constexpr std::string_view input = "_input";
  Best<Sensor> sensors;
  for (const auto& file : namesIn(folder)) {
    if (!file.starts_with("temp") || !file.ends_with(input)) continue;
    const auto number = file.substr(0, file.size() - input.size());
    const auto label = lineOf(folder + number + "_label");
    const auto rank = label.empty() ? unlabelled : rankOf(label, labels);
    if (!rank) continue;
    const auto name = label.empty() ? lineOf(folder + "name") : label;
    sensors.offer(*rank, {std::string(dieSensor) + " " + name, KernelFile(folder + file)});
  }
  std::move(sensors.all().begin(), sensors.all().end(), std::back_inserter(sensors_));
}

bool LinuxTemperatureSensors::read(std::vector<TemperatureReading>& readings) const {
  bool areAllThere = true;
  for (const auto& sensor : sensors_) {
    char buffer[32];
    auto text = sensor.input.read(buffer);
    long long thousandths = 0;
    if (takeNumber(text, thousandths)) {
      readings.push_back({sensor.name, static_cast<double>(thousandths) / perDegree});
    } else {
      areAllThere = false;
    }
  }
  return areAllThere;
}

}  // namespace zephyx
