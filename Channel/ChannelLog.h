#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace zephyx {

/// What a channel reports about malformed messages and dropped answers, under its name.
struct ChannelLog {
  using Diagnostics = std::function<void(std::string_view line)>;

  std::string channel;
  /// May be empty.
  Diagnostics diagnostics;

  /// Never about contents.
  void report(std::string_view what, std::string_view method = {}) const;
};

}  // namespace zephyx
