#pragma once

#include "Platform/Keychain.h"

namespace zephyx {

/// The Secret Service of the user's session, and the one secret that another program keeps
/// elsewhere, which is only read.
class LinuxKeychain final : public Keychain {
 public:
  bool isAvailable() override;
  std::optional<Bytes> password(const std::string& service) override;
  bool setPassword(const std::string& service, BytesView secret) override;
  bool deletePassword(const std::string& service) override;
};

}  // namespace zephyx
