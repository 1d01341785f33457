#include "Runner/ModelDisplayName.h"

#include <algorithm>
#include <vector>

namespace zephyx {
namespace {

constexpr std::string_view prefix = "claude-";
constexpr std::size_t dateLength = 8;

std::vector<std::string> pieces(std::string_view text) {
  std::vector<std::string> result(1);
  for (const char character : text) {
    if (character == '-') {
      result.emplace_back();
    } else {
      result.back() += character;
    }
  }
  return result;
}

bool isDate(const std::string& piece) {
  return piece.size() == dateLength &&
         std::all_of(piece.begin(), piece.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::string modelDisplayName(std::string_view identifier) {
  auto rest = identifier;
  if (rest.starts_with(prefix)) rest.remove_prefix(prefix.size());
  auto words = pieces(rest);
  if (words.size() > 1 && isDate(words.back())) words.pop_back();
  auto name = words.front();
  if (name.empty()) return std::string(identifier);
  if (name.front() >= 'a' && name.front() <= 'z') name.front() -= 'a' - 'A';
  for (std::size_t i = 1; i < words.size(); ++i) name += (i == 1 ? " " : ".") + words[i];
  return name;
}

}  // namespace zephyx
