#pragma once

#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "Tests/Desktop/ZephyxProcess.h"

// What measurements from outside share. One thread.

namespace zephyx {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// In milliseconds.
double since(Clock::time_point start, Clock::time_point end = Clock::now());
/// Prints a line "name value unit".
void report(const std::string& name, double value, const std::string& unit);
double median(std::vector<double> values);
/// Throws std::runtime_error, saying `what`, unless the condition holds.
void require(bool condition, const std::string& what);
/// A value in kilobytes of one of the process's status files.
double kilobytes(pid_t pid, const std::string& file, const std::string& key);
/// Processor time of all threads in milliseconds; finer than the clock ticks of /proc/PID/stat.
double processorTime(pid_t pid);
/// Throws std::runtime_error when the program does not get ready.
std::unique_ptr<ZephyxProcess> readyProgram(VirtualDesktop& desktop);
/// The moment at which the clipboard next changes hands, as any program on this desktop could find
/// out while the copying one is still at work.
std::future<Clock::time_point> nextCopy();

// The groups of measurements.
void measureLimits();
void measureStart();
void measureFirstCopy();
void measureCopies();
void measureTranslation();
void measureMenu();
void measureIdle();

}  // namespace zephyx
