#include "Tests/Desktop/Soak.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <stdexcept>

namespace zephyx {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int entriesKept = 10;
constexpr const char* answer = "una línea traducida";

double secondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace

Soak::Soak(const std::vector<std::string>& words)
    : desktop_({.compositor = true, .tray = true, .sessionBus = true, .outputs = true}) {
  desktop_.enter();
  input().setKeyboard(DesktopInput::Keyboard::Synthetic);
  server_ = std::make_unique<ChatServer>(std::vector<std::string>{answer});
  sound_ = std::make_unique<PulseServer>(desktop_);
  sensors_.setProcessor("50000");
  ZephyxProcess::useSettings(desktop_,
                             {{"flutter.ai.serverAddress", server_->address()},
                              {"flutter.ai.serverModel", "any"},
                              {"flutter.clipboardHistoryLimit", std::to_string(entriesKept)}});
  for (const auto* size : {"60x40", "800x500", "3000x2000"})
    desktop_.run({"convert", "-size", size, "gradient:#1b2a6b-#f2994a",
                  (desktop_.home() / (std::string(size) + ".png")).string()});
  program_ =
      std::make_unique<ZephyxProcess>(desktop_, Environment{{"ZEPHYX_HWMON", sensors_.folder()}});
  if (!program_->waitUntilReady()) throw std::runtime_error("Zephyx does not get ready");
  editor_ = std::make_unique<TargetProgram>(desktop_, TargetProgram::Kind::Gtk);
  terminal_ = std::make_unique<TargetProgram>(desktop_, TargetProgram::Kind::Terminal);
  line_ = std::make_unique<TargetProgram>(desktop_, TargetProgram::Kind::Qt, "a line");
  addActs();
  addSurroundings();
  std::erase_if(acts_, [&](const Act& act) {
    return !words.empty() && std::ranges::none_of(words, [&](const std::string& word) {
      return act.name.find(word) != std::string::npos;
    });
  });
}

void Soak::perform(Act& act) {
  const auto start = Clock::now();
  bool happened = false;
  try {
    happened = act.perform();
  } catch (const std::exception& error) {
    std::cout << error.what() << '\n';
  }
  const double seconds = secondsSince(start);
  ++act.times;
  act.seconds += seconds;
  act.longest = std::max(act.longest, seconds);
  if (happened) return;
  ++act.failures;
  const auto picture = "failures/soak-" + std::to_string(rounds_) + "-" +
                       std::to_string(&act - acts_.data()) + ".png";
  desktop_.screenshot(picture);
  std::cout << "round " << rounds_ << ": NOT SEEN: " << act.name << "  [" << picture << "]"
            << std::endl;
  for (int presses = 0; presses < 3; ++presses) input().tap(key::Escape);
  (void)line_->activate();
}

void Soak::round() {
  ++rounds_;
  for (auto& act : acts_) {
    if (!program_->process().isRunning()) throw std::runtime_error("the program has ended");
    perform(act);
  }
}

ProcessFigures Soak::settled() {
  input().movePointer(640, 500);
  (void)terminal_->activate();
  for (int copy = 0; copy < entriesKept + 2; ++copy)
    if (!copyText(12)) throw std::runtime_error("copies are no longer recorded");
  return ProcessFigures::of(desktop_, program_->pid(), program_->dataFolder());
}

bool Soak::run(std::chrono::seconds duration) {
  // Caches and pools have their size after that.
  for (int warmUp = 0; warmUp < (duration.count() > 0 ? 3 : 1); ++warmUp) round();
  const auto before = settled();
  for (auto& act : acts_) act = {.name = act.name, .perform = act.perform};
  const auto start = Clock::now();
  const int first = rounds_;
  do round();
  while (Clock::now() - start < duration);
  auto after = settled();
  // Memory is given back when it was quiet for a while.
  (void)waitFor(
      [&] {
        if (!after.hasGrownSince(before)) return true;
        after = ProcessFigures::of(desktop_, program_->pid(), program_->dataFolder());
        return false;
      },
      std::chrono::seconds(20));
  std::printf("\n%d rounds in %.1f minutes\n", rounds_ - first, secondsSince(start) / 60);
  return report(before, after);
}

bool Soak::report(const ProcessFigures& before, const ProcessFigures& after) {
  bool isGood = true;
  std::printf("\n%-36s %6s %9s %9s %9s\n", "act", "times", "not seen", "mean, s", "longest, s");
  for (const auto& act : acts_) {
    isGood = isGood && act.failures == 0;
    std::printf("%-36s %6d %9d %9.2f %9.2f\n", act.name.c_str(), act.times, act.failures,
                act.seconds / std::max(act.times, 1), act.longest);
  }
  std::printf("\n%-36s %9s %9s %9s\n", "figure", "before", "after", "tolerance");
  for (std::size_t at = 0; at < after.figures.size(); ++at) {
    const auto& was = before.figures[at];
    const auto& is = after.figures[at];
    std::printf("%-36s %9.1f %9.1f %9.1f%s\n", is.name.c_str(), was.value, is.value, is.tolerance,
                is.value > was.value + is.tolerance ? "  GROWN" : "");
  }
  std::fflush(stdout);
  if (!isGood) std::cout << "\nThe program's log ends with:\n" << program_->logEnd(3000);
  return isGood && !after.hasGrownSince(before);
}

}  // namespace zephyx

int main(int argc, char** argv) {
  try {
    const double minutes = argc > 1 ? std::stod(argv[1]) : 5;
    const std::vector<std::string> words(argv + std::min(argc, 2), argv + argc);
    return zephyx::Soak(words).run(std::chrono::seconds(static_cast<int>(minutes * 60))) ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
