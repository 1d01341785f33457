#pragma once

#include <QtCore/QString>
#include <variant>
#include <vector>

#include "Platform/Linux/Updates/Appcast.h"

namespace zephyx {

struct UpdateConfiguration;

/// Nothing newer than what runs.
struct NoUpdate {
  QString newest;  ///< what the feed has for this system, when that is older; to be read
};

/// A newer release that can be installed, none, or why the newest one must not be.
using UpdateChoice = std::variant<AppcastItem, NoUpdate, UpdateRefusal>;

/// The newest release for this system. One that is not newer than what runs is never chosen, and
/// one without a signature never passed over for an older one with it.
UpdateChoice chooseUpdate(const std::vector<AppcastItem>& items,
                          const UpdateConfiguration& configuration);

}  // namespace zephyx
