#pragma once

#include "Platform/Directories.h"

namespace zephyx {

/// The XDG base directories.
class LinuxDirectories final : public Directories {
 public:
  /// XDG data home.
  std::optional<std::string> applicationSupport() const override;
  std::string home() const override;

  /// XDG config home; nothing when there is no home folder either.
  std::optional<std::string> configuration() const;
  /// A folder that only this user can enter, for sockets and locks; nothing when none can be had.
  std::optional<std::string> runtime() const;
};

}  // namespace zephyx
