#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/BinaryMessenger.h"
#include "Platform/Linux/Clipboard/TargetNames.h"

namespace zephyx {

/// One target of another program's copy, as that program handed it over.
struct SavedTarget {
  std::string name;
  std::string type;         ///< of the property
  std::uint8_t format = 8;  ///< bits per item
  std::shared_ptr<const Bytes> data;
};

/// A copy of another program with everything that it offered. Immutable. Any thread.
class SavedTargets {
 public:
  explicit SavedTargets(std::vector<SavedTarget> targets);

  const std::vector<SavedTarget>& all() const { return targets_; }
  /// Null when it was not offered.
  const SavedTarget* find(const std::string& name) const;

  /// The pasteboard types of the copy, as `typeOffers` names them.
  std::vector<std::string> types() const;
  /// Text as valid UTF-8.
  std::optional<Bytes> data(const std::string& type) const;

 private:
  std::vector<SavedTarget> targets_;
  TypeOffers offers_;
};

}  // namespace zephyx
