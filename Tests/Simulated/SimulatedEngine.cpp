#include "Tests/Simulated/SimulatedEngine.h"

#include <set>
#include <utility>

namespace zephyx {
namespace {
const std::set<std::string> entryPoints = {"main", "clipboardMain", "contractMain"};
}

SimulatedEngine::SimulatedEngine(std::string name, bool canRun, SimulatedDispatch& dispatch,
                                 SimulatedFaults& faults)
    : name_(std::move(name)),
      canRun_(canRun),
      messengers_(SimulatedMessenger::makePair(dispatch, faults)),
      screen_(dispatch, messengers_.second) {}

bool SimulatedEngine::run(const std::string& entryPoint) {
  if (!canRun_ || isShutDown_ || !entryPoints.contains(entryPoint)) return false;
  entryPoint_ = entryPoint;
  return true;
}

void SimulatedEngine::shutDown() {
  isShutDown_ = true;
  messengers_.first->shutDown();
}

}  // namespace zephyx
