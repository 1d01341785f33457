#pragma once

#include <cstdint>
#include <string>

namespace zephyx {

/// Makes this program insert into the store of a folder until it is killed, writing each entry's
/// identifier once the entry was acknowledged.
inline constexpr auto storeWriterArgument = "--write-store";
int writeStoreUntilKilled(const std::string& folder);

/// What it writes under that identifier.
std::string storeWriterText(std::int64_t id);

}  // namespace zephyx
