#include "Tests/Simulated/SimulatedHotKeys.h"

#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

HotKeyRegistration SimulatedHotKeys::registerHotKey(std::uint32_t keyCode,
                                                    std::uint32_t carbonModifiers,
                                                    HotKeyIdentity identity) {
  dispatch_.requireMainThread("registerHotKey");
  const Combination combination{keyCode, carbonModifiers};
  if (missingKeys_.contains(keyCode)) return {hotKeyStatus::invalid, {}};
  if (claimed_.contains(combination) || registered_->contains(combination)) {
    return {hotKeyStatus::exists, {}};
  }
  registered_->emplace(combination, identity);
  return {hotKeyStatus::noErr, Registration([registered = registered_, combination] {
            registered->erase(combination);
          })};
}

Registration SimulatedHotKeys::setPressedHandler(std::function<void(HotKeyIdentity)> handler) {
  dispatch_.requireMainThread("setPressedHandler");
  handler_ = std::make_shared<std::function<void(HotKeyIdentity)>>(std::move(handler));
  return Registration([handler = handler_] { *handler = nullptr; });
}

bool SimulatedHotKeys::press(Combination combination) {
  if (claimed_.contains(combination)) return true;
  const auto found = registered_->find(combination);
  if (found == registered_->end()) return false;
  dispatch_.mainQueue().async([handler = handler_, identity = found->second] {
    const auto handle = handler ? *handler : nullptr;  // it may take itself off
    if (handle) handle(identity);
  });
  return true;
}

}  // namespace zephyx
