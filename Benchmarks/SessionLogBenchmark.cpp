#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <malloc.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "Benchmarks/SessionLogs.h"
#include "Runner/SessionLogScan.h"

namespace zephyx {
namespace {

template <typename Work>
double secondsFor(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  return *middle;
}

/// `cat` of all files to /dev/null.
void concatenate(const SessionLogs& logs) {
  std::vector<std::string> arguments = {"cat"};
  for (const auto& file : logs.files()) arguments.push_back(file.string());
  std::vector<char*> pointers;
  for (auto& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t process = 0;
  int status = -1;
  if (posix_spawnp(&process, "cat", &actions, nullptr, pointers.data(), environ) == 0) {
    waitpid(process, &status, 0);
  }
  posix_spawn_file_actions_destroy(&actions);
  if (status != 0) throw std::runtime_error("cat failed");
}

/// The same bytes into a buffer, and nothing more.
void readAll(const SessionLogs& logs, unsigned threads) {
  std::atomic<std::size_t> next = 0;
  const auto work = [&] {
    std::vector<char> buffer(SessionLogBuffer().block);
    for (std::size_t index; (index = next++) < logs.files().size();) {
      const int file = ::open(logs.files()[index].c_str(), O_RDONLY | O_CLOEXEC);
      while (::read(file, buffer.data(), buffer.size()) > 0) benchmark::ClobberMemory();
      ::close(file);
    }
  };
  std::vector<std::jthread> others;
  for (unsigned thread = 1; thread < threads; ++thread) others.emplace_back(work);
  work();
}

void scan(const SessionLogs& logs, unsigned threads) {
  const auto models =
      localModelBreakdown(logs.root(), SessionLogs::beginning, {.threads = threads});
  if (models.size() != 2) throw std::runtime_error("nothing was counted");
}

/// Megabytes that the process has had at once since `forgetPeak`.
double peakMemory() {
  std::ifstream status("/proc/self/status");
  std::string word;
  double kilobytes = 0;
  while (status >> word) {
    if (word == "VmHWM:") status >> kilobytes;
  }
  return kilobytes / 1024;
}

void forgetPeak() {
  malloc_trim(0);
  std::ofstream("/proc/self/clear_refs") << 5;
}

void sessionLogs(benchmark::State& state, std::size_t bytes) {
  constexpr int rounds = 9;
  SessionLogs logs(bytes);
  forgetPeak();
  scan(logs, 2);
  state.counters["peakMB"] = peakMemory();

  std::vector<double> cat, read1, read2, scan1, scan2, ratio1, ratio2;
  for (auto _ : state) {
    for (int round = 0; round < rounds; ++round) {
      cat.push_back(secondsFor([&] { concatenate(logs); }));
      scan2.push_back(secondsFor([&] { scan(logs, 2); }));
      scan1.push_back(secondsFor([&] { scan(logs, 1); }));
      read2.push_back(secondsFor([&] { readAll(logs, 2); }));
      read1.push_back(secondsFor([&] { readAll(logs, 1); }));
      ratio2.push_back(scan2.back() / cat.back());
      ratio1.push_back(scan1.back() / cat.back());
    }
  }
  const auto speed = [&](const std::vector<double>& times) {
    return static_cast<double>(logs.size()) / median(times) / 1e9;
  };
  state.counters["oneThreadToCat"] = median(ratio1);
  state.counters["twoThreadsToCat"] = median(ratio2);
  state.counters["GBpsCat"] = speed(cat);
  state.counters["GBpsRead1"] = speed(read1);
  state.counters["GBpsRead2"] = speed(read2);
  state.counters["GBpsScan1"] = speed(scan1);
  state.counters["GBpsScan2"] = speed(scan2);

  logs.makeOldExceptOneIn(10);
  std::vector<double> tenth;
  for (int round = 0; round < rounds; ++round) {
    tenth.push_back(secondsFor([&] { scan(logs, 2); }));
  }
  state.counters["oneFileInTenMs"] = median(tenth) * 1e3;
}
BENCHMARK_CAPTURE(sessionLogs, 500MB, 500'000'000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sessionLogs, 2GB, 2'000'000'000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zephyx
