#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "Platform/FileReader.h"
#include "Runner/ModelUsageTotals.h"
#include "Runner/SessionLogLines.h"

namespace zephyx {

/// How session logs are read: what is read at once stays in the processor's cache, and lines up to
/// a length are kept while they are read.
struct SessionLogBuffer {
  std::size_t block = 256 << 10;
  std::size_t line = 4 << 20;
};

/// Reads whole session logs, one after the other. One thread at a time.
class SessionLogReader {
 public:
  explicit SessionLogReader(double since, SessionLogBuffer sizes = {});

  /// Adds the tokens of a log. One that cannot be read to its end, or is not UTF-8 all through,
  /// adds nothing.
  void read(const std::string& path, ModelUsageTotals& totals);

 private:
  bool readLines(FileReader& file, ModelUsageTotals& totals);
  bool readLongLine(FileReader& file, ModelUsageTotals& totals);
  bool readMore(FileReader& file);
  bool isUtf8(std::size_t size) const;
  void dropFront(std::size_t size);

  const SessionLogBuffer sizes_;
  SessionLogLines lines_;
  const std::unique_ptr<char[]> buffer_;
  std::size_t held_ = 0;  ///< bytes at the buffer's front, from the beginning of a line on
  bool atEnd_ = false;
};

}  // namespace zephyx
