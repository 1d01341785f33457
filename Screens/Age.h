#pragma once

#include <QtCore/QString>
#include <cstdint>

namespace zephyx {

std::int64_t nowEpochMs();

/// How long ago, in a few words: "now", "5 min", "3 h", "yesterday", "4 days", then the date.
QString ageText(std::int64_t thenEpochMs, std::int64_t nowEpochMs);

}  // namespace zephyx
