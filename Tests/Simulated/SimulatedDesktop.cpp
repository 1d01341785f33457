#include "Tests/Simulated/SimulatedDesktop.h"

#include "Tests/Simulated/SimulatedPlatform.h"

namespace zephyx {

SimulatedDesktop::SimulatedDesktop() : platform_(std::make_unique<SimulatedPlatform>(*this)) {}
SimulatedDesktop::~SimulatedDesktop() = default;

}  // namespace zephyx
