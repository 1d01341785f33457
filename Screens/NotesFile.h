#pragma once

#include <QtCore/QString>
#include <variant>
#include <vector>

#include "Screens/Note.h"

namespace zephyx {

/// Notes in a file of the user's: a JSON array of objects with "title", "text" and "modified"
/// (milliseconds since 1970).

/// Why it did not work, in words; empty when it did. An older file is only replaced by a whole one.
QString writeNotesFile(const QString& path, const std::vector<Note>& notes);

/// The notes, or why the file cannot be read, in words.
std::variant<std::vector<Note>, QString> readNotesFile(const QString& path);

}  // namespace zephyx
