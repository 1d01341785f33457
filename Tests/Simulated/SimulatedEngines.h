#pragma once

#include "Platform/FlutterEngine.h"
#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedEngine.h"
#include "Tests/Simulated/SimulatedFaults.h"
#include "Tests/Simulated/SimulatedViewController.h"

namespace zephyx {

/// Keeps an eye on every engine and view controller, and none of them alive.
class SimulatedEngines final : public FlutterEngines {
 public:
  /// The name of the engine that comes with a view controller.
  static constexpr const char* defaultEngine = "default";

  SimulatedEngines(SimulatedDispatch& dispatch, SimulatedFaults& faults)
      : dispatch_(dispatch), faults_(faults) {}

  std::shared_ptr<FlutterEngine> makeEngine(const std::string& name) override {
    dispatch_.requireMainThread("makeEngine");
    auto engine =
        std::make_shared<SimulatedEngine>(name, !refused_.contains(name), dispatch_, faults_);
    engines_.push_back(engine);
    return engine;
  }
  std::shared_ptr<FlutterViewController> makeViewController(
      std::shared_ptr<FlutterEngine> engine) override {
    auto simulated = std::dynamic_pointer_cast<SimulatedEngine>(engine);
    if (!simulated) faults_.add("a view controller on an engine from elsewhere");
    auto controller = std::make_shared<SimulatedViewController>(std::move(simulated));
    viewControllers_.push_back(controller);
    return controller;
  }
  std::shared_ptr<FlutterViewController> makeViewControllerWithDefaultEngine() override {
    const auto engine = makeEngine(defaultEngine);
    engine->run("main");
    return makeViewController(engine);
  }
  void registerPlugins(FlutterViewController& controller) override {
    dynamic_cast<SimulatedEngine&>(*controller.engine()).hasPlugins = true;
  }

  /// Engines of this name that are made from now on do not run.
  void refuseToRun(const std::string& name) { refused_.insert(name); }
  /// The newest living engine with this name, or on this entry point; null when there is none.
  std::shared_ptr<SimulatedEngine> engine(const std::string& name) const {
    return newest(engines_, [&](const SimulatedEngine& engine) { return engine.name() == name; });
  }
  std::shared_ptr<SimulatedEngine> engineRunning(const std::string& entryPoint) const {
    return newest(engines_,
                  [&](const SimulatedEngine& engine) { return engine.entryPoint() == entryPoint; });
  }
  /// The newest living view controller on that engine; null when there is none.
  std::shared_ptr<SimulatedViewController> viewController(const std::string& engineName) const {
    return newest(viewControllers_, [&](const SimulatedViewController& controller) {
      const auto engine = std::dynamic_pointer_cast<SimulatedEngine>(controller.engine());
      return engine && engine->name() == engineName;
    });
  }

 private:
  template <typename T, typename Predicate>
  static std::shared_ptr<T> newest(const std::vector<std::weak_ptr<T>>& all, Predicate predicate) {
    for (auto candidate = all.rbegin(); candidate != all.rend(); ++candidate) {
      if (auto alive = candidate->lock(); alive && predicate(*alive)) return alive;
    }
    return nullptr;
  }

  SimulatedDispatch& dispatch_;
  SimulatedFaults& faults_;
  std::set<std::string> refused_;
  std::vector<std::weak_ptr<SimulatedEngine>> engines_;
  std::vector<std::weak_ptr<SimulatedViewController>> viewControllers_;
};

}  // namespace zephyx
