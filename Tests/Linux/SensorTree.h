#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace zephyx {

/// A folder of devices with sensors, as the kernel shows them.
class SensorTree {
 public:
  /// A file's name and what is in it.
  using Files = std::vector<std::pair<std::string, std::string>>;

  explicit SensorTree(std::filesystem::path folder) : folder_(std::move(folder)) {
    std::filesystem::create_directories(folder_);
  }

  std::string folder() const { return folder_.string(); }

  /// `device` is the name that the kernel gives it in this start, such as "hwmon3".
  void add(const std::string& device, const Files& files) const {
    std::filesystem::create_directories(folder_ / device);
    for (const auto& [name, text] : files) {
      std::ofstream(folder_ / device / name, std::ios::trunc) << text << '\n';
    }
  }

  /// What is open of it can no longer be read.
  void remove(const std::string& device) const {
    std::error_code none;
    for (const auto& file : std::filesystem::directory_iterator(folder_ / device, none)) {
      std::filesystem::resize_file(file, 0);
    }
    std::filesystem::remove_all(folder_ / device);
  }

  /// The one processor of a machine; `thousandths` as in "52000".
  void setProcessor(const std::string& thousandths) const {
    add("hwmon0",
        {{"name", "coretemp"}, {"temp1_label", "Package id 0"}, {"temp1_input", thousandths}});
  }

 private:
  std::filesystem::path folder_;
};

}  // namespace zephyx
