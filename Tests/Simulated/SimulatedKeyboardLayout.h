#pragma once

#include <map>

#include "Platform/HotKeys.h"

namespace zephyx {

/// What the keys print, as data.
class SimulatedKeyboardLayout final : public KeyboardLayout {
 public:
  using Table = std::map<std::uint32_t, std::string>;
  static const Table us;
  static const Table german;

  std::string character(std::uint32_t keyCode) const override;
  std::string uppercased(const std::string& text) const override;
  std::string lowercased(const std::string& text) const override;

  void use(const Table& table) { table_ = &table; }

 private:
  const Table* table_ = &us;
};

}  // namespace zephyx
