#include "Runner/Descriptions.h"

#include <array>
#include <charconv>

namespace zephyx {
namespace {

std::string describe(double value) {
  std::array<char, 32> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  std::string text(buffer.data(), end);
  if (text.find_first_of(".en") == std::string::npos) text += ".0";
  return text;
}

}  // namespace

const char* describe(bool value) {
  return value ? "true" : "false";
}

std::string describe(Size size) {
  return "(" + describe(size.width) + ", " + describe(size.height) + ")";
}

std::string describe(const Rect& rect) {
  return "(" + describe(rect.origin.x) + ", " + describe(rect.origin.y) + ", " +
         describe(rect.size.width) + ", " + describe(rect.size.height) + ")";
}

std::string describeIdentifier(const std::string& bundleIdentifier) {
  return bundleIdentifier.empty() ? "?" : bundleIdentifier;
}

}  // namespace zephyx
