#include "Runner/SessionLogScan.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <future>
#include <string>
#include <system_error>

#include "Runner/ModelUsageTotals.h"

namespace zephyx {
namespace {

namespace fs = std::filesystem;

/// Less than this is read sooner than another thread has started.
constexpr std::uintmax_t enoughForAThread = 1 << 20;

struct SessionLog {
  std::string path;
  std::uintmax_t size;
};

/// To the precision of the result: nanoseconds as one number would be more than it can tell apart.
double secondsSince1970(fs::file_time_type time) {
  using namespace std::chrono;
  const auto date = file_clock::to_sys(time);
  const auto second = floor<seconds>(date);
  return static_cast<double>(second.time_since_epoch().count()) +
         duration<double>(date - second).count();
}

/// An entry that vanishes meanwhile has no date, which counts as an old one. A link stands for the
/// file that it leads to, with that file's date.
bool isChangedLog(const fs::directory_entry& entry, double since) {
  std::error_code error;
  if (entry.path().extension() != ".jsonl" || !entry.is_regular_file(error)) return false;
  const auto date = entry.last_write_time(error);
  return !error && secondsSince1970(date) >= since;
}

/// The largest first, so that none is left over for one thread at the end. A folder that cannot be
/// read is passed over, from the entry on at which that shows; links to folders are not followed.
std::vector<SessionLog> changedLogs(const fs::path& root, double since) {
  std::vector<SessionLog> logs;
  std::vector<fs::path> folders = {root};
  while (!folders.empty()) {
    const auto folder = std::move(folders.back());
    folders.pop_back();
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
      std::error_code ignored;
      if (!entry->is_symlink(ignored) && entry->is_directory(ignored)) {
        folders.push_back(entry->path());
      } else if (isChangedLog(*entry, since)) {
        const auto size = entry->file_size(ignored);
        logs.push_back({entry->path().string(), ignored ? 0 : size});
      }
    }
  }
  std::ranges::sort(logs, std::greater(), &SessionLog::size);
  return logs;
}

std::size_t threadsFor(const std::vector<SessionLog>& logs, unsigned most) {
  std::uintmax_t bytes = 0;
  for (const auto& log : logs) bytes += log.size;
  const std::uintmax_t useful = 1 + bytes / enoughForAThread;
  return static_cast<std::size_t>(std::min<std::uintmax_t>({most, useful, logs.size()}));
}

}  // namespace

std::vector<ModelUsage> localModelBreakdown(const fs::path& root, double since,
                                            const SessionLogScanOptions& options) {
  const auto logs = changedLogs(root, since);
  std::atomic<std::size_t> next = 0;
  const auto readLogs = [&] {
    SessionLogReader reader(since, options.buffer);
    ModelUsageTotals totals;
    for (std::size_t log; (log = next++) < logs.size();) reader.read(logs[log].path, totals);
    return totals;
  };
  std::vector<std::future<ModelUsageTotals>> helpers;
  for (std::size_t thread = 1; thread < threadsFor(logs, options.threads); ++thread) {
    helpers.push_back(std::async(std::launch::async, readLogs));
  }
  auto totals = readLogs();
  for (auto& helper : helpers) totals.add(helper.get());
  return totals.sorted();
}

}  // namespace zephyx
