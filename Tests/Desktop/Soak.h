#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Tests/Desktop/ChatServer.h"
#include "Tests/Desktop/ProcessFigures.h"
#include "Tests/Desktop/PulseServer.h"
#include "Tests/Desktop/TargetProgram.h"
#include "Tests/Desktop/ZephyxProcess.h"
#include "Tests/Linux/SensorTree.h"

namespace zephyx {

/// Days of a busy user in minutes: rounds of everything that comes and goes while the program runs.
/// What it holds after the last round is what it held after the first ones.
class Soak {
 public:
  /// With `words`, of the acts only those whose names have one of them.
  explicit Soak(const std::vector<std::string>& words);

  /// Goes on for so long, one round at the least. True when every act was seen to happen and
  /// nothing has grown.
  bool run(std::chrono::seconds duration);

 private:
  struct Act {
    std::string name;
    std::function<bool()> perform;
    int times = 0, failures = 0;
    double seconds = 0, longest = 0;
  };

  void addActs();
  void round();
  void perform(Act& act);
  /// Brings everything that is bounded by design to the same contents.
  ProcessFigures settled();
  bool report(const ProcessFigures& before, const ProcessFigures& after);

  void addSurroundings();
  void add(const char* name, std::function<bool()> act) {
    acts_.push_back({.name = name, .perform = std::move(act)});
  }

  /// An act that ends with `line_` in front.
  bool isHidden();
  bool isRecorded(const std::function<void()>& copy);
  bool copyText(std::size_t size);
  bool pasteInto(TargetProgram& target);
  bool askForTranslation();
  bool panelComesAndGoes();

  DesktopInput& input() { return desktop_.input(); }
  DesktopWindows& windows() { return desktop_.windows(); }

  VirtualDesktop desktop_;
  SensorTree sensors_{desktop_.home() / "hwmon"};
  std::unique_ptr<ChatServer> server_;
  std::unique_ptr<PulseServer> sound_;
  std::unique_ptr<ZephyxProcess> program_;
  std::unique_ptr<TargetProgram> editor_, line_, terminal_;
  std::vector<Act> acts_;
  int rounds_ = 0;
  int copies_ = 0;
};

}  // namespace zephyx
