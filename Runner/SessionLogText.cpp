#include "Runner/SessionLogText.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace zephyx {
namespace {

/// Compares bytewise with the vector instructions of whichever processor; a match is all ones.
using Lane = unsigned char __attribute__((vector_size(16)));

Lane laneAt(const char* text) {
  Lane lane;
  std::memcpy(&lane, text, sizeof lane);
  return lane;
}

Lane equal(Lane lane, char value) {
  return Lane(lane == static_cast<unsigned char>(value));
}

bool isZero(Lane lane) {
  std::array<std::uint64_t, 2> halves;
  std::memcpy(&halves, &lane, sizeof lane);
  return (halves[0] | halves[1]) == 0;
}

constexpr std::size_t stride = 128;

/// Whether a mention may begin at one of the stride's bytes: three of its letters are compared.
bool mayBeginIn(const char* text) {
  constexpr std::size_t middle = 4;
  constexpr std::size_t last = usageMention.size() - 1;
  Lane found{};
  for (std::size_t at = 0; at < stride; at += sizeof found) {
    found |= equal(laneAt(text + at), usageMention[0]) &
             equal(laneAt(text + at + middle), usageMention[middle]) &
             equal(laneAt(text + at + last), usageMention[last]);
  }
  return !isZero(found);
}

}  // namespace

std::size_t findUsageMention(std::string_view text) {
  constexpr std::size_t overlap = usageMention.size() - 1;
  std::size_t at = 0;
  for (; at + stride + overlap <= text.size(); at += stride) {
    if (!mayBeginIn(text.data() + at)) continue;
    const auto found = text.substr(at, stride + overlap).find(usageMention);
    if (found != std::string_view::npos) return at + found;
  }
  return text.find(usageMention, at);
}

std::size_t beginningOfLastLine(std::string_view text) {
  while (text.size() >= sizeof(Lane) &&
         isZero(equal(laneAt(text.data() + text.size() - sizeof(Lane)), '\n'))) {
    text.remove_suffix(sizeof(Lane));
  }
  return text.rfind('\n') + 1;  // npos is the number before 0
}

}  // namespace zephyx
