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

constexpr std::size_t blockSize = 32;

bool isAsciiBlock(const char* block) {
  return ((utf8::load<std::uint64_t>(block) | utf8::load<std::uint64_t>(block + 8) |
           utf8::load<std::uint64_t>(block + 16) | utf8::load<std::uint64_t>(block + 24)) &
          utf8::highBits) == 0;
}

std::uint64_t walk(std::uint64_t state, const char* text, std::size_t size) {
  for (std::size_t i = 0; i < size; ++i) {
    state = steps[static_cast<unsigned char>(text[i])] >> (state & 63);
  }
  return state & 63;
}

}  // namespace

bool utf8::isValid(std::string_view text) {
  std::uint64_t state = accept;
  const char* position = text.data();
  std::size_t left = text.size();
  for (; left >= blockSize; position += blockSize, left -= blockSize) {
    if (state == accept && isAsciiBlock(position)) continue;
    state = walk(state, position, blockSize);
    if (state == reject) return false;
  }
  return (state == accept && isShortAscii({position, left})) ||
         walk(state, position, left) == accept;
}

}  // namespace zephyx
