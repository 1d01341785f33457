#include "Runner/PointerScreen.h"

#include <algorithm>
#include <cstddef>

namespace zephyx {

std::optional<Screen> pointerScreen(const Screens& screens) {
  const auto all = screens.screens();
  if (all.empty()) return std::nullopt;
  const auto pointer = screens.mouseLocation();
  const auto under = std::find_if(all.begin(), all.end(), [&](const Screen& screen) {
    return screen.frame.containsPointer(pointer);
  });
  if (under != all.end()) return *under;
  const auto main = screens.mainScreenIndex();
  return all[main >= 0 ? static_cast<std::size_t>(main) : 0];
}

}  // namespace zephyx
