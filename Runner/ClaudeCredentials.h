#pragma once

#include <optional>
#include <string>

namespace zephyx {

class Keychain;

/// The places where an access token for the usage service is kept: an item of our own, and that of
/// the coding tool, which is only read. The calls may wait for the user: on the work queue.
class ClaudeCredentials {
 public:
  explicit ClaudeCredentials(Keychain& keychain) : keychain_(keychain) {}

  std::optional<std::string> readOwnToken() const;
  void storeOwnToken(const std::string& token) const;
  void deleteOwnToken() const;
  /// After an action of the user's only: the system may ask for permission.
  std::optional<std::string> readClaudeCodeToken() const;

 private:
  Keychain& keychain_;
};

}  // namespace zephyx
