#include "Tests/Screens/StoreWriter.h"

#include <cstdio>

#include "Screens/ClipboardStore.h"

namespace zephyx {

std::string storeWriterText(std::int64_t id) {
  // Every third is long enough to lie in parts.
  const std::string word = std::to_string(id) + ' ';
  std::string text = word;
  for (int i = 0; id % 3 == 0 && i < 20'000; ++i) text += word;
  return text;
}

int writeStoreUntilKilled(const std::string& folder) {
  ClipboardStore store(folder);
  const auto last = store.page({}, ClipboardStore::newest, 1);
  for (auto id = last.empty() ? 1 : last[0].id + 1;; ++id) {
    const Map message{{"type", "text"}, {"text", storeWriterText(id)}};
    const auto inserted = store.insert(*CapturedEntry::fromMessage(message), 1'000'000);
    if (!inserted || inserted->entry.id != id) return 1;
    std::printf("%lld\n", static_cast<long long>(id));
    std::fflush(stdout);
  }
}

}  // namespace zephyx
