#pragma once

#include <string>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// Makes a folder, with the folders above it, for the user alone. False when that cannot be done.
/// Any thread.
bool makePrivateFolder(const std::string& path);

/// Writes a file that only the user can read, through a temporary file and a rename: a reader sees
/// the whole file or none. False, and nothing left behind, when it cannot be written. Any thread.
bool writePrivateFile(const std::string& path, BytesView contents);

}  // namespace zephyx
