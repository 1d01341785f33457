#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "Runner/ModelUsageTotals.h"

namespace zephyx {

/// Reads the token counts in the lines of session logs. One thread at a time.
class SessionLogLines {
 public:
  /// Lines stamped before `since`, in seconds since 1970, do not count.
  explicit SessionLogLines(double since);
  ~SessionLogLines();

  /// How much memory behind the lines must be readable, whatever it holds.
  static constexpr std::size_t padding = 64;

  /// Adds what the lines of `lines` say, which are separated by line feeds. A line that is not a
  /// JSON object, or lacks anything that counts need, adds nothing.
  void aggregateModelUsage(std::string_view lines, ModelUsageTotals& totals);

 private:
  struct Parser;

  void addLine(std::string_view line, ModelUsageTotals& totals);

  const double since_;
  const std::unique_ptr<Parser> parser_;
};

}  // namespace zephyx
