#include "Platform/Linux/Updates/VersionOrder.h"

#include <algorithm>
#include <vector>

namespace zephyx {
namespace {

constexpr qsizetype longestVersion = 64;

bool isDigit(QChar character) {
  return character >= u'0' && character <= u'9';
}

bool isLetter(QChar character) {
  return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z');
}

/// A run of digits without leading zeros, or of letters.
struct Piece {
  QStringView text;
  bool isNumber = true;
};

std::vector<Piece> piecesOf(QStringView version) {
  std::vector<Piece> pieces;
  for (qsizetype at = 0; at < version.size();) {
    const bool isNumber = isDigit(version[at]);
    auto end = at;
    while (end < version.size() && (isNumber ? isDigit(version[end]) : isLetter(version[end]))) {
      ++end;
    }
    if (end == at) {
      ++at;
      continue;
    }
    while (isNumber && at < end && version[at] == u'0') ++at;
    pieces.push_back({version.mid(at, end - at), isNumber});
    at = end;
  }
  return pieces;
}

std::strong_ordering compare(const Piece& a, const Piece& b) {
  if (a.isNumber != b.isNumber) return a.isNumber <=> b.isNumber;
  if (a.isNumber && a.text.size() != b.text.size()) return a.text.size() <=> b.text.size();
  return a.text.compare(b.text) <=> 0;
}

}  // namespace

bool isVersion(QStringView version) {
  if (version.isEmpty() || version.size() > longestVersion || !isDigit(version[0])) return false;
  return std::all_of(version.begin(), version.end(), [](QChar each) {
    return isDigit(each) || isLetter(each) || QStringView(u".-_+").contains(each);
  });
}

std::strong_ordering compareVersions(QStringView a, QStringView b) {
  auto left = piecesOf(a);
  auto right = piecesOf(b);
  const auto count = std::max(left.size(), right.size());
  left.resize(count);
  right.resize(count);
  for (std::size_t i = 0; i < count; ++i) {
    const auto order = compare(left[i], right[i]);
    if (order != std::strong_ordering::equal) return order;
  }
  return std::strong_ordering::equal;
}

}  // namespace zephyx
