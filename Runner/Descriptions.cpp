#include "Runner/Descriptions.h"

#include <iomanip>
#include <locale>
#include <sstream>

namespace zephyx {
namespace {

/// The fewest decimals that tell the value apart, one at least. Not through `std::to_chars`, which
/// the oldest macOS that the program runs on lacks for floating-point numbers.
std::string describe(double value) {
  constexpr int mostDecimals = 17;
  for (int decimals = 1;; ++decimals) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(decimals) << value;
    std::istringstream back(text.str());
    back.imbue(std::locale::classic());
    double parsed = 0;
    if (decimals == mostDecimals || (back >> parsed && parsed == value)) return text.str();
  }
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
