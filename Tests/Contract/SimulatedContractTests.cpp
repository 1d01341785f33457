#include <memory>

#include "Tests/Contract/AlertContract.h"
#include "Tests/Contract/AudioContract.h"
#include "Tests/Contract/DispatchContract.h"
#include "Tests/Contract/DisplaysContract.h"
#include "Tests/Contract/EngineContract.h"
#include "Tests/Contract/EventTapContract.h"
#include "Tests/Contract/KeyboardContract.h"
#include "Tests/Contract/NetworkContract.h"
#include "Tests/Contract/PasteboardContract.h"
#include "Tests/Contract/SimulatedContractDesktop.h"
#include "Tests/Contract/SoftwareUpdateContract.h"
#include "Tests/Contract/StatisticsContract.h"
#include "Tests/Contract/StatusBarContract.h"
#include "Tests/Contract/StoreContract.h"
#include "Tests/Contract/WindowContract.h"
#include "Tests/Contract/WorkspaceContract.h"

namespace zephyx {
namespace {

ContractDesktopFactory simulation(const char* name, SimulatedContractDesktop::Kind kind) {
  return {name, [kind] { return std::make_unique<SimulatedContractDesktop>(kind); }};
}

const auto simulations =
    testing::Values(simulation("Polled", SimulatedContractDesktop::Kind::polled),
                    simulation("Announcing", SimulatedContractDesktop::Kind::announcing));

}  // namespace

INSTANTIATE_TEST_SUITE_P(Simulated, AlertContract, simulations, contractRunName);
INSTANTIATE_TEST_SUITE_P(Simulated, AudioContract, simulations, contractRunName);
INSTANTIATE_TEST_SUITE_P(Simulated, DispatchContract, simulations, contractRunName);
INSTANTIATE_TEST_SUITE_P(Simulated, DisplaysContract, simulations, contractRunName);
INSTANTIATE_TEST_SUITE_P(Simulated, EngineContract, simulations, contractRunName);
INSTANTIATE_TEST_SUITE_P(Simulated, EventTapContract, simulations, contractRunName);
INSTANTIATE_TEST_SUITE_P(Simulated, KeyboardContract, simulations, contractRunName);
INSTANTIATE_TEST_SUITE_P(Simulated, NetworkContract, simulations, contractRunName);
INSTANTIATE_TEST_SUITE_P(Simulated, PasteboardContract, simulations, contractRunName);
INSTANTIATE_TEST_SUITE_P(Simulated, StatisticsContract, simulations, contractRunName);
INSTANTIATE_TEST_SUITE_P(Simulated, SoftwareUpdateContract, simulations, contractRunName);
INSTANTIATE_TEST_SUITE_P(Simulated, StatusBarContract, simulations, contractRunName);
INSTANTIATE_TEST_SUITE_P(Simulated, StoreContract, simulations, contractRunName);
INSTANTIATE_TEST_SUITE_P(Simulated, WindowContract, simulations, contractRunName);
INSTANTIATE_TEST_SUITE_P(Simulated, WorkspaceContract, simulations, contractRunName);

}  // namespace zephyx
