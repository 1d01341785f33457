#pragma once

#include <memory>
#include <string>

#include "Platform/FlutterEngine.h"
#include "Tests/Simulated/SimulatedScreen.h"

namespace zephyx {

class SimulatedDispatch;
class SimulatedFaults;

/// Holds its user to the order of an engine's end.
class SimulatedEngine final : public FlutterEngine {
 public:
  SimulatedEngine(std::string name, bool canRun, SimulatedDispatch& dispatch,
                  SimulatedFaults& faults);
  ~SimulatedEngine() override;

  bool run(const std::string& entryPoint) override;
  std::shared_ptr<BinaryMessenger> binaryMessenger() const override { return messengers_.first; }
  void shutDown() override;

  /// Ends by itself, in no order.
  void crash();
  const std::string& name() const { return name_; }
  /// Empty until it runs.
  const std::string& entryPoint() const { return entryPoint_; }
  bool isShutDown() const { return isShutDown_; }
  const std::shared_ptr<SimulatedMessenger>& hostMessenger() const { return messengers_.first; }
  SimulatedScreen& screen() { return screen_; }
  bool hasPlugins = false;
  bool isInWindow = false;

 private:
  std::string name_;
  bool canRun_;
  SimulatedMessenger::Pair messengers_;
  SimulatedScreen screen_;
  SimulatedFaults& faults_;
  std::string entryPoint_;
  bool isShutDown_ = false;
};

}  // namespace zephyx
