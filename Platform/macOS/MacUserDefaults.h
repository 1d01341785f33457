#pragma once

#include <optional>
#include <string>

#include "Platform/UserDefaults.h"

namespace zephyx {

/// The standard user defaults. The system's preferences service writes them down by itself, also
/// when this process has been killed.
class MacUserDefaults final : public UserDefaults {
 public:
  std::optional<Bytes> data(const std::string& key) const override;
  std::optional<std::string> string(const std::string& key) const override;
  std::optional<bool> boolean(const std::string& key) const override;
  std::optional<double> number(const std::string& key) const override;
  void setData(const std::string& key, BytesView value) override;
  void setString(const std::string& key, const std::string& value) override;
  void setBoolean(const std::string& key, bool value) override;
  void setNumber(const std::string& key, double value) override;
  void removeObject(const std::string& key) override;
};

}  // namespace zephyx
