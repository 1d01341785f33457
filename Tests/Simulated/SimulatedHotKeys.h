#pragma once

#include <set>

#include "Platform/HotKeys.h"
#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

class SimulatedHotKeys final : public HotKeys {
 public:
  using Combination = std::pair<std::uint32_t, std::uint32_t>;  ///< key code, Carbon modifiers

  explicit SimulatedHotKeys(SimulatedDispatch& dispatch) : dispatch_(dispatch) {}

  HotKeyRegistration registerHotKey(std::uint32_t keyCode, std::uint32_t carbonModifiers,
                                    HotKeyIdentity identity) override {
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
  Registration setPressedHandler(std::function<void(HotKeyIdentity)> handler) override {
    dispatch_.requireMainThread("setPressedHandler");
    handler_ = std::make_shared<std::function<void(HotKeyIdentity)>>(std::move(handler));
    return Registration([handler = handler_] { *handler = nullptr; });
  }

  /// Another program takes a combination, or gives it back.
  void otherProgramClaims(Combination combination) { claimed_.insert(combination); }
  void otherProgramReleases(Combination combination) { claimed_.erase(combination); }
  /// Keys that this machine does not have.
  void removeKey(std::uint32_t keyCode) { missingKeys_.insert(keyCode); }

  /// The user presses a combination; true when it was somebody's hot key.
  bool press(Combination combination) {
    if (claimed_.contains(combination)) return true;
    const auto found = registered_->find(combination);
    if (found == registered_->end()) return false;
    dispatch_.mainQueue().async([handler = handler_, identity = found->second] {
      const auto handle = handler ? *handler : nullptr;  // it may take itself off
      if (handle) handle(identity);
    });
    return true;
  }
  const std::map<Combination, HotKeyIdentity>& registered() const { return *registered_; }

 private:
  SimulatedDispatch& dispatch_;
  std::set<Combination> claimed_;
  std::set<std::uint32_t> missingKeys_;
  std::shared_ptr<std::map<Combination, HotKeyIdentity>> registered_ =
      std::make_shared<std::map<Combination, HotKeyIdentity>>();
  std::shared_ptr<std::function<void(HotKeyIdentity)>> handler_;
};

}  // namespace zephyx
