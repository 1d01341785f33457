#pragma once

#include <optional>
#include <string>

namespace zephyx {

/// The permission to type into and read from other programs. Main thread.
class Accessibility {
 public:
  virtual ~Accessibility() = default;
  virtual bool isProcessTrusted() const = 0;
  /// The same, and lets the system ask the user for the permission when it is missing.
  virtual bool isProcessTrustedWithPrompt() = 0;
  /// Why nobody can give the permission here, in a sentence for the user; nothing when somebody
  /// can.
  virtual std::optional<std::string> obstacle() const = 0;
};

}  // namespace zephyx
