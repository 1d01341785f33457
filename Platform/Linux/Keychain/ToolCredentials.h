#pragma once

#include <optional>
#include <string_view>

#include "Platform/BinaryMessenger.h"

namespace zephyx::toolCredentials {

/// The keychain item in which the coding tool keeps its credentials where there is a keychain.
inline constexpr std::string_view service = "Claude Code-credentials";

/// What it keeps in their place here: a file of the same contents in the user's home. Nothing when
/// it cannot be read or is too large to be that file. Any thread.
std::optional<Bytes> read();

}  // namespace zephyx::toolCredentials
