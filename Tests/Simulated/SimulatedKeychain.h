#pragma once

#include "Platform/Keychain.h"
#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

/// The user's keychain, unlocked.
class SimulatedKeychain final : public Keychain {
 public:
  explicit SimulatedKeychain(SimulatedDispatch& dispatch) : dispatch_(dispatch) {}

  bool isAvailable() override { return isAvailable_; }
  std::optional<Bytes> password(const std::string& service) override {
    dispatch_.forbidMainThread("Keychain::password");
    ++reads_[service];
    const auto found = items_.find(service);
    if (!isAvailable_ || found == items_.end()) return std::nullopt;
    return found->second;
  }
  bool setPassword(const std::string& service, BytesView secret) override {
    dispatch_.forbidMainThread("Keychain::setPassword");
    if (isAvailable_) items_[service] = Bytes(secret.begin(), secret.end());
    return isAvailable_;
  }
  bool deletePassword(const std::string& service) override {
    dispatch_.forbidMainThread("Keychain::deletePassword");
    if (isAvailable_) items_.erase(service);
    return isAvailable_;
  }

  /// What other programs and earlier starts have left there.
  std::map<std::string, Bytes>& items() { return items_; }
  /// How often the host has read the password of a service.
  int reads(const std::string& service) const {
    const auto found = reads_.find(service);
    return found == reads_.end() ? 0 : found->second;
  }
  void setAvailable(bool isAvailable) { isAvailable_ = isAvailable; }

 private:
  SimulatedDispatch& dispatch_;
  std::map<std::string, Bytes> items_;
  std::map<std::string, int> reads_;
  bool isAvailable_ = true;
};

}  // namespace zephyx
