#pragma once

#include <QtCore/QStringView>
#include <compare>

namespace zephyx {

/// Whether it can be told which of two is newer: begins with a digit, of digits, letters and
/// separators, and of a sane length.
bool isVersion(QStringView version);

/// Orders versions by their pieces: numbers by their value, words by their letters, and a word
/// below anything else, so that 1.0b2 comes before 1.0. Missing pieces are zeros.
std::strong_ordering compareVersions(QStringView a, QStringView b);

}  // namespace zephyx
