#include <algorithm>
#include <functional>
#include <map>

#include "Benchmarks/Measuring.h"
#include "Tests/Desktop/ClipboardProgram.h"

namespace zephyx {

void measureStart() {
  std::map<std::string, std::vector<double>> moments;
  for (int round = 0; round < 7; ++round) {
    VirtualDesktopOptions options;
    options.tray = true;
    VirtualDesktop desktop(options);
    const auto start = Clock::now();
    ZephyxProcess program(desktop);
    std::map<std::string, std::function<bool()>> conditions{
        {"hotkey", [&] { return desktop.windows().isGrabbedByOthers(key::V, 0x41); }},
        {"capture", [&] { return program.logCount("[Clipboard] initialize() done") > 0; }},
        {"tray", [&] { return program.trayIcon().has_value(); }},
        {"window",
         [&] {
           const auto window = program.mainWindow();
           return window && desktop.windows().distinctColors(*window) > 4;
         }},
    };
    double all = 0;
    while (!conditions.empty() && since(start) < 10'000) {
      std::erase_if(conditions, [&](auto& condition) {
        if (!condition.second()) return false;
        all = since(start);
        moments[condition.first].push_back(all);
        return true;
      });
      pass(milliseconds(1));
    }
    require(conditions.empty(), "not ready: " + program.log());
    moments["all"].push_back(all);
  }
  for (const auto& [name, values] : moments) report("start." + name, median(values), "ms");
}

void measureFirstCopy() {
  std::vector<double> times;
  for (int round = 0; round < 5; ++round) {
    VirtualDesktop desktop;
    desktop.enter();
    ClipboardProgram owner;
    const auto start = Clock::now();
    ZephyxProcess program(desktop);
    for (int copy = 0; program.history().count() == 0 && since(start) < 10'000; ++copy) {
      owner.copyText("copy " + std::to_string(copy));
      pass(milliseconds(2));
    }
    times.push_back(since(start));
  }
  report("start.first_copy", median(times), "ms");
}

}  // namespace zephyx
