#include "Tests/Simulated/SimulatedEngines.h"

#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedEngine.h"
#include "Tests/Simulated/SimulatedFaults.h"
#include "Tests/Simulated/SimulatedViewController.h"

namespace zephyx {
namespace {

template <typename T, typename Predicate>
std::shared_ptr<T> newest(const std::vector<std::weak_ptr<T>>& all, Predicate predicate) {
  for (auto candidate = all.rbegin(); candidate != all.rend(); ++candidate) {
    if (auto alive = candidate->lock(); alive && predicate(*alive)) return alive;
  }
  return nullptr;
}

}  // namespace

std::shared_ptr<FlutterEngine> SimulatedEngines::makeEngine(const std::string& name) {
  dispatch_.requireMainThread("makeEngine");
  auto engine =
      std::make_shared<SimulatedEngine>(name, !refused_.contains(name), dispatch_, faults_);
  engines_.push_back(engine);
  return engine;
}

std::shared_ptr<FlutterViewController> SimulatedEngines::makeViewController(
    std::shared_ptr<FlutterEngine> engine) {
  auto simulated = std::dynamic_pointer_cast<SimulatedEngine>(engine);
  if (!simulated) faults_.add("a view controller on an engine from elsewhere");
  auto controller = std::make_shared<SimulatedViewController>(std::move(simulated));
  viewControllers_.push_back(controller);
  return controller;
}

std::shared_ptr<FlutterViewController> SimulatedEngines::makeViewControllerWithDefaultEngine() {
  const auto engine = makeEngine(defaultEngine);
  engine->run("main");
  return makeViewController(engine);
}

void SimulatedEngines::registerPlugins(FlutterViewController& controller) {
  dynamic_cast<SimulatedEngine&>(*controller.engine()).hasPlugins = true;
}

std::shared_ptr<SimulatedEngine> SimulatedEngines::engine(const std::string& name) const {
  return newest(engines_, [&](const SimulatedEngine& engine) { return engine.name() == name; });
}

std::shared_ptr<SimulatedEngine> SimulatedEngines::engineRunning(
    const std::string& entryPoint) const {
  return newest(engines_,
                [&](const SimulatedEngine& engine) { return engine.entryPoint() == entryPoint; });
}

std::shared_ptr<SimulatedViewController> SimulatedEngines::viewController(
    const std::string& engineName) const {
  return newest(viewControllers_, [&](const SimulatedViewController& controller) {
    const auto engine = std::dynamic_pointer_cast<SimulatedEngine>(controller.engine());
    return engine && engine->name() == engineName;
  });
}

}  // namespace zephyx
