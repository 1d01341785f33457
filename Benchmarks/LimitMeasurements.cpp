#include <future>

#include "Benchmarks/BareReader.h"
#include "Benchmarks/Measuring.h"
#include "Tests/Desktop/ClipboardProgram.h"

// What this machine, its X server and its toolkit cannot do faster, whatever the program: the
// measurements of the same run are held against it.

namespace zephyx {
namespace {

void measureRoundTrip() {
  BareReader reader;
  std::vector<double> times;
  for (int round = 0; round < 2'000; ++round) {
    const auto start = Clock::now();
    reader.roundTrip();
    times.push_back(since(start));
  }
  report("limit.x11.round_trip", median(times), "ms");
}

void measureBareCopies(const VirtualDesktop& desktop) {
  BareReader reader;
  ClipboardProgram owner;
  std::vector<double> times;
  for (int round = 0; round < 200; ++round) {
    auto taken = std::async(std::launch::async, [&] {
      reader.nextText();
      return Clock::now();
    });
    const auto start = owner.copyText("measured copy " + std::to_string(round));
    times.push_back(since(start, taken.get()));
    pass(milliseconds(5));
  }
  report("limit.copy.text", median(times), "ms");

  times.clear();
  const std::string text(20'000'000, 'x');
  for (int round = 0; round < 5; ++round) {
    auto announced = nextCopy();
    auto taken = std::async(std::launch::async, [&] {
      require(reader.nextText() == text.size(), "the long text is not whole");
      return Clock::now();
    });
    desktop.copy(text);
    times.push_back(since(announced.get(), taken.get()));
  }
  report("limit.copy.text20MB", median(times), "ms");
}

void measureEmptyProgram() {
  std::vector<double> starts, memory;
  for (int round = 0; round < 7; ++round) {
    VirtualDesktop desktop;
    const auto start = Clock::now();
    const ChildProcess program = desktop.start({EMPTY_QT_PROGRAM});
    const auto isDrawn = [&] {
      const auto window = desktop.windows().find(
          [&](const DesktopWindow& each) { return each.pid == program.pid() && each.viewable; });
      return window && desktop.windows().distinctColors(*window) > 4;
    };
    require(waitFor(isDrawn, milliseconds(10'000), milliseconds(1)), "no window was drawn");
    starts.push_back(since(start));
    pass(milliseconds(500));
    memory.push_back(kilobytes(program.pid(), "smaps_rollup", "Pss") / 1024);
  }
  report("limit.start", median(starts), "ms");
  report("limit.memory", median(memory), "MB");
}

}  // namespace

void measureLimits() {
  measureEmptyProgram();
  VirtualDesktop desktop;
  desktop.enter();
  measureRoundTrip();
  measureBareCopies(desktop);
}

}  // namespace zephyx
