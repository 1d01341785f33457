#pragma once

#include <set>

#include "Platform/FlutterEngine.h"
#include "Tests/Simulated/SimulatedFaults.h"
#include "Tests/Simulated/SimulatedScreen.h"

namespace zephyx {

class SimulatedDispatch;

/// Holds its user to the order of an engine's end.
class SimulatedEngine final : public FlutterEngine {
 public:
  SimulatedEngine(std::string name, bool canRun, SimulatedDispatch& dispatch,
                  SimulatedFaults& faults)
      : name_(std::move(name)),
        canRun_(canRun),
        messengers_(SimulatedMessenger::makePair(dispatch, faults)),
        screen_(dispatch, messengers_.second),
        faults_(faults) {}
  ~SimulatedEngine() override {
    if (!entryPoint_.empty() && !isShutDown_) faults_.add(name_ + " released before its shutdown");
  }

  bool run(const std::string& entryPoint) override {
    if (!canRun_ || isShutDown_ || !entryPoints.contains(entryPoint)) return false;
    entryPoint_ = entryPoint;
    return true;
  }
  std::shared_ptr<BinaryMessenger> binaryMessenger() const override { return messengers_.first; }
  void shutDown() override {
    if (messengers_.first->hasHandlers()) faults_.add(name_ + " shut down with handlers on");
    if (isInWindow) faults_.add(name_ + " shut down in a window");
    crash();
  }

  /// Ends by itself, in no order.
  void crash() {
    isShutDown_ = true;
    messengers_.first->shutDown();
  }
  const std::string& name() const { return name_; }
  /// Empty until it runs.
  const std::string& entryPoint() const { return entryPoint_; }
  SimulatedScreen& screen() { return screen_; }
  bool hasPlugins = false;
  bool isInWindow = false;

 private:
  static inline const std::set<std::string> entryPoints = {"main", "clipboardMain", "translateMain",
                                                           "contractMain"};

  std::string name_;
  bool canRun_;
  SimulatedMessenger::Pair messengers_;
  SimulatedScreen screen_;
  SimulatedFaults& faults_;
  std::string entryPoint_;
  bool isShutDown_ = false;
};

}  // namespace zephyx
