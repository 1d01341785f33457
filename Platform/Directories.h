#pragma once

#include <optional>
#include <string>

namespace zephyx {

/// Places in the file system: absolute paths without a trailing slash. Any thread.
class Directories {
 public:
  virtual ~Directories() = default;
  /// The first of the user's application-support folders; nothing when the system names none.
  virtual std::optional<std::string> applicationSupport() const = 0;
  virtual std::string home() const = 0;
};

}  // namespace zephyx
