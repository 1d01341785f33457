#include <sys/mman.h>
#include <unistd.h>

#include <stdexcept>

#include "Runner/SessionLogReader.h"
#include "Tests/Fuzz/FuzzTargets.h"
#include "Tests/Runner/SessionLogReference.h"

namespace zephyx {
namespace {

constexpr double since = 1748779200.5;  // 2025-06-01T12:00:00.5Z

/// A file in memory, with a path.
class MemoryFile {
 public:
  explicit MemoryFile(std::string_view contents) : descriptor_(memfd_create("log", MFD_CLOEXEC)) {
    if (write(descriptor_, contents.data(), contents.size()) !=
        static_cast<ssize_t>(contents.size())) {
      throw std::runtime_error("no file in memory");
    }
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { close(descriptor_); }

  std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  const int descriptor_;
};

std::vector<ModelUsage> breakdown(const MemoryFile& file, SessionLogBuffer sizes) {
  ModelUsageTotals totals;
  SessionLogReader(since, sizes).read(file.path(), totals);
  return totals.sorted();
}

}  // namespace

const char* brokenSessionLogProperty(BytesView bytes) {
  if (bytes.empty()) return nullptr;
  const std::string log(bytes.begin() + 1, bytes.end());
  std::vector<ModelUsage> expected;
  try {
    expected = referenceBreakdown({log}, since);
  } catch (const std::overflow_error&) {
    return nullptr;  // ends the process, as it is meant to
  }
  const MemoryFile file(log);
  if (breakdown(file, {.block = 4096, .line = 65'536}) != expected) {
    return "a log gives what the rules give one by one";
  }
  const std::size_t block = 10 + bytes.front() % 64;
  const std::size_t line = block + 10 + bytes.front() / 64;
  if (breakdown(file, {.block = block, .line = line}) != expected) {
    return "however a log is divided, it gives the same";
  }
  return nullptr;
}

}  // namespace zephyx
