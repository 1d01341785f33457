#include "Tests/Simulated/SimulatedEngine.h"

#include <set>
#include <utility>

#include "Tests/Simulated/SimulatedFaults.h"

namespace zephyx {
namespace {
const std::set<std::string> entryPoints = {"main", "clipboardMain", "translateMain",
                                           "contractMain"};
}

SimulatedEngine::SimulatedEngine(std::string name, bool canRun, SimulatedDispatch& dispatch,
                                 SimulatedFaults& faults)
    : name_(std::move(name)),
      canRun_(canRun),
      messengers_(SimulatedMessenger::makePair(dispatch, faults)),
      screen_(dispatch, messengers_.second),
      faults_(faults) {}

SimulatedEngine::~SimulatedEngine() {
  if (!entryPoint_.empty() && !isShutDown_) faults_.add(name_ + " released before its shutdown");
}

bool SimulatedEngine::run(const std::string& entryPoint) {
  if (!canRun_ || isShutDown_ || !entryPoints.contains(entryPoint)) return false;
  entryPoint_ = entryPoint;
  return true;
}

void SimulatedEngine::shutDown() {
  if (messengers_.first->hasHandlers()) faults_.add(name_ + " shut down with handlers on");
  if (isInWindow) faults_.add(name_ + " shut down in a window");
  crash();
}

void SimulatedEngine::crash() {
  isShutDown_ = true;
  messengers_.first->shutDown();
}

}  // namespace zephyx
