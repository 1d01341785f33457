#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "Platform/FlutterEngine.h"

namespace zephyx {

class SimulatedDispatch;
class SimulatedEngine;
class SimulatedFaults;
class SimulatedViewController;

/// Keeps an eye on every engine and view controller, and none of them alive.
class SimulatedEngines final : public FlutterEngines {
 public:
  /// The name of the engine that comes with a view controller.
  static constexpr const char* defaultEngine = "default";

  SimulatedEngines(SimulatedDispatch& dispatch, SimulatedFaults& faults)
      : dispatch_(dispatch), faults_(faults) {}

  std::shared_ptr<FlutterEngine> makeEngine(const std::string& name) override;
  std::shared_ptr<FlutterViewController> makeViewController(
      std::shared_ptr<FlutterEngine> engine) override;
  std::shared_ptr<FlutterViewController> makeViewControllerWithDefaultEngine() override;
  void registerPlugins(FlutterViewController& controller) override;

  /// Engines of this name that are made from now on do not run.
  void refuseToRun(const std::string& name) { refused_.insert(name); }
  /// The newest living engine with this name, or on this entry point; null when there is none.
  std::shared_ptr<SimulatedEngine> engine(const std::string& name) const;
  std::shared_ptr<SimulatedEngine> engineRunning(const std::string& entryPoint) const;
  /// The newest living view controller on that engine; null when there is none.
  std::shared_ptr<SimulatedViewController> viewController(const std::string& engineName) const;

 private:
  SimulatedDispatch& dispatch_;
  SimulatedFaults& faults_;
  std::set<std::string> refused_;
  std::vector<std::weak_ptr<SimulatedEngine>> engines_;
  std::vector<std::weak_ptr<SimulatedViewController>> viewControllers_;
};

}  // namespace zephyx
