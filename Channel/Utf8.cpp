#include "Channel/Utf8.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace zephyx {
namespace {

// A state is the bit offset of its field in a table entry, so that one shift makes one step: the
// entry of a byte holds, in the field of each state, the state that follows.
enum State : std::uint64_t {
  accept = 0,
  reject = 6,
  oneMore = 12,
  twoMore = 18,
  threeMore = 24,
  afterE0 = 30,  // second byte from A0: anything lower is overlong
  afterED = 36,  // second byte up to 9F: anything higher is a surrogate
  afterF0 = 42,  // second byte from 90: anything lower is overlong
  afterF4 = 48,  // second byte up to 8F: anything higher is above U+10FFFF
};

constexpr State afterLead(unsigned byte) {
  if (byte < 0x80) return accept;
  if (byte < 0xC2 || byte > 0xF4) return reject;
  if (byte < 0xE0) return oneMore;
  if (byte == 0xE0) return afterE0;
  if (byte == 0xED) return afterED;
  if (byte < 0xF0) return twoMore;
  if (byte == 0xF0) return afterF0;
  return byte == 0xF4 ? afterF4 : threeMore;
}

constexpr std::uint64_t tableEntry(unsigned byte) {
  const auto within = [byte](unsigned first, unsigned last, State next) {
    return byte >= first && byte <= last ? next : reject;
  };
  return std::uint64_t{afterLead(byte)} << accept | std::uint64_t{reject} << reject |
         std::uint64_t{within(0x80, 0xBF, accept)} << oneMore |
         std::uint64_t{within(0x80, 0xBF, oneMore)} << twoMore |
         std::uint64_t{within(0x80, 0xBF, twoMore)} << threeMore |
         std::uint64_t{within(0xA0, 0xBF, oneMore)} << afterE0 |
         std::uint64_t{within(0x80, 0x9F, oneMore)} << afterED |
         std::uint64_t{within(0x90, 0xBF, twoMore)} << afterF0 |
         std::uint64_t{within(0x80, 0x8F, twoMore)} << afterF4;
}

constexpr auto steps = [] {
  std::array<std::uint64_t, 256> table{};
  for (unsigned byte = 0; byte < table.size(); ++byte) table[byte] = tableEntry(byte);
  return table;
}();

std::uint64_t walk(std::uint64_t state, std::string_view text) {
  for (const char byte : text) state = steps[static_cast<unsigned char>(byte)] >> (state & 63);
  return state & 63;
}

constexpr std::size_t blockSize = 64;

bool isAsciiBlock(const char* block) {
  std::uint64_t seen = 0;
  for (std::size_t i = 0; i < blockSize; i += 8) seen |= utf8::load<std::uint64_t>(block + i);
  return (seen & utf8::highBits) == 0;
}

// Whether each byte of a block may follow the three in front of it, which must be there. Only
// comparisons of single bytes and no branch, so that the compiler does many bytes at once.
bool isBlockInPlace(const char* block) {
  unsigned char bad = 0;
  for (std::size_t i = 0; i < blockSize; ++i) {
    const auto before = [at = block + i](std::size_t distance) {
      return static_cast<unsigned char>(*(at - distance));
    };
    const unsigned char byte = before(0);
    const unsigned char last = before(1);
    const unsigned char lastButOne = before(2);
    const unsigned char lastButTwo = before(3);
    const bool continues = (byte & 0xC0U) == 0x80;
    const bool shallContinue = (last >= 0xC0) | (lastButOne >= 0xE0) | (lastButTwo >= 0xF0);
    const bool isNeverUsed = (byte == 0xC0) | (byte == 0xC1) | (byte >= 0xF5);
    const bool isOverlong = ((last == 0xE0) & (byte < 0xA0)) | ((last == 0xF0) & (byte < 0x90));
    const bool isSurrogate = (last == 0xED) & (byte >= 0xA0);
    const bool isTooHigh = (last == 0xF4) & (byte >= 0x90);
    bad |= static_cast<unsigned char>((continues != shallContinue) | isNeverUsed | isOverlong |
                                      isSurrogate | isTooHigh);
  }
  return bad == 0;
}

// Where the character begins that is the last one, whole or not, in front of `at`.
std::size_t lastCharacter(std::string_view text, std::size_t at) {
  for (std::size_t distance = 1; distance <= 3 && distance <= at; ++distance) {
    if ((static_cast<unsigned char>(text[at - distance]) & 0xC0U) != 0x80) return at - distance;
  }
  return at;
}

}  // namespace

bool utf8::isValid(std::string_view text) {
  std::size_t at = 0;
  bool followsAscii = true;
  for (; text.size() - at >= blockSize; at += blockSize) {
    const char* block = text.data() + at;
    const bool isAscii = isAsciiBlock(block);
    const bool isInPlace =
        (isAscii && followsAscii) ||
        (at > 0 ? isBlockInPlace(block) : walk(accept, text.substr(0, blockSize)) != reject);
    if (!isInPlace) return false;
    followsAscii = isAscii;
  }
  if (followsAscii && isShortAscii(text.substr(at))) return true;
  return walk(accept, text.substr(lastCharacter(text, at))) == accept;
}

}  // namespace zephyx
