#pragma once

#include "Platform/Keychain.h"

namespace zephyx {

/// Generic passwords by service alone, in the user's default keychain.
class MacKeychain final : public Keychain {
 public:
  bool isAvailable() override { return true; }
  std::optional<Bytes> password(const std::string& service) override;
  bool setPassword(const std::string& service, BytesView secret) override;
  bool deletePassword(const std::string& service) override;
};

}  // namespace zephyx
