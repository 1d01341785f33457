#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "Runner/SessionLogScan.h"
#include "Tests/Simulated/SimulatedDirectories.h"

namespace zephyx {

/// A folder of session logs on the real file system.
class SessionLogTest : public testing::Test {
 protected:
  /// The window begins at some moment before the test, with a fraction.
  static constexpr double since = 1748779200.25;

  /// A line of that model with so many tokens, stamped within the window.
  static std::string line(std::string_view model, std::string_view tokens,
                          std::string_view rest = "") {
    std::string text = R"({"timestamp":"2025-06-01T12:00:01Z","message":{"model":")";
    text.append(model).append(R"(","usage":{"input_tokens":)").append(tokens).append("}");
    return text.append(rest).append("}}\n");
  }

  std::filesystem::path write(const std::string& name, std::string_view contents) const {
    const auto path = root_ / name;
    std::filesystem::create_directories(path.parent_path());
    // Cutting a file to nothing makes some file systems wait for the disk.
    std::filesystem::remove(path);
    std::ofstream(path, std::ios::binary) << contents;
    return path;
  }

  static void setDate(const std::filesystem::path& path, double seconds) {
    const std::chrono::sys_seconds second(std::chrono::seconds(static_cast<std::int64_t>(seconds)));
    const std::chrono::nanoseconds fraction(
        static_cast<std::int64_t>((seconds - std::floor(seconds)) * 1e9));
    const std::chrono::sys_time<std::chrono::nanoseconds> date = second + fraction;
    std::filesystem::last_write_time(path, std::chrono::file_clock::from_sys(date));
  }

  /// The models and their input tokens, as "a 5, b 3".
  std::string scan(const SessionLogScanOptions& options = {}) const {
    std::string text;
    for (const auto& usage : localModelBreakdown(root_, since, options)) {
      text += (text.empty() ? "" : ", ") + usage.model + " " + std::to_string(usage.inputTokens);
    }
    return text;
  }

  const SimulatedDirectories directories_;
  const std::filesystem::path root_ = directories_.home() + "/.claude/projects";
};

}  // namespace zephyx
