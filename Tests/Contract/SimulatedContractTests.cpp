#include "Tests/Contract/ContractSuites.h"
#include "Tests/Contract/SimulatedContractDesktop.h"

namespace zephyx {
namespace {

ContractDesktopFactory simulation(const char* name, SimulatedContractDesktop::Kind kind) {
  return {name, [kind] { return std::make_unique<SimulatedContractDesktop>(kind); }};
}

}  // namespace

testing::internal::ParamGenerator<ContractDesktopFactory> contractDesktops() {
  return testing::Values(simulation("Polled", SimulatedContractDesktop::Kind::polled),
                         simulation("Announcing", SimulatedContractDesktop::Kind::announcing));
}

}  // namespace zephyx
