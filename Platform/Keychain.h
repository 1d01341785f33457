#pragma once

#include <optional>
#include <string>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// The user's secrets, kept by the system: generic passwords, one for each service name. A call may
/// wait for another program or for the user: any thread but the main one. Secrets never reach a
/// log.
class Keychain {
 public:
  virtual ~Keychain() = default;

  /// Whether the system keeps secrets at all, locked or not.
  virtual bool isAvailable() = 0;
  /// Nothing when there is none, it is locked, or the user refuses.
  virtual std::optional<Bytes> password(const std::string& service) = 0;
  /// Adds it, in the place of the one that may be there. False when it is not kept.
  virtual bool setPassword(const std::string& service, BytesView secret) = 0;
  /// True when there is none afterwards.
  virtual bool deletePassword(const std::string& service) = 0;
};

}  // namespace zephyx
