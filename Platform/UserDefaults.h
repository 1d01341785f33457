#pragma once

#include <optional>
#include <string>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// The user's settings, kept across starts. Main thread. A value of another kind than asked for
/// reads as nothing. A write is on disk soon after, and survives the process being killed.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;
  virtual std::optional<Bytes> data(const std::string& key) const = 0;
  virtual std::optional<std::string> string(const std::string& key) const = 0;
  virtual std::optional<bool> boolean(const std::string& key) const = 0;
  virtual std::optional<double> number(const std::string& key) const = 0;
  virtual void setData(const std::string& key, BytesView value) = 0;
  virtual void setString(const std::string& key, const std::string& value) = 0;
  virtual void setBoolean(const std::string& key, bool value) = 0;
  /// `value` is finite.
  virtual void setNumber(const std::string& key, double value) = 0;
  virtual void removeObject(const std::string& key) = 0;
};

}  // namespace zephyx
