#pragma once

#include "Tests/Runner/HostTest.h"

namespace zephyx {

/// The running host with the editor in front, copying from it.
class CaptureTest : public HostTest {
 protected:
  using Items = std::vector<std::pair<std::string, std::string>>;

  /// Starts the host and hides its window.
  void launchBehindEditor() {
    launch();
    switchToEditor();
  }

  std::shared_ptr<SimulatedPasteboardOwner> copy(const Items& items, double answerTime = 0) {
    SimulatedPasteboardOwner owner;
    for (const auto& [type, text] : items) owner.items.emplace_back(type, bytesOf(text));
    owner.answerTime = answerTime;
    return desktop.pasteboard.otherProgramCopies(std::move(owner));
  }

  /// The entries that the panel's engine was sent since the last call, after `seconds`.
  std::vector<Map> entriesAfter(double seconds) {
    desktop.dispatch.advance(seconds);
    std::vector<Map> entries;
    for (const auto& call : panelScreen().takeCalls()) {
      EXPECT_EQ(call.method, "clipboardEntryCaptured");
      entries.push_back(*call.arguments.asMap());
    }
    return entries;
  }

  /// The one entry of a copy; nothing when it made none.
  std::optional<Map> captured(const Items& items) {
    copy(items);
    const auto entries = entriesAfter(0.4);
    EXPECT_LE(entries.size(), 1u);
    return entries.empty() ? std::nullopt : std::optional(entries.front());
  }

  static std::string text(const Map& map, const char* key) {
    const auto* value = map.find(key);
    if (!value) return "(absent)";
    const auto* string = value->asString();
    return string ? *string : "(no string)";
  }
  static std::int64_t integer(const Map& map, const char* key) {
    const auto* value = map.find(key);
    return value ? value->asInteger().value_or(-2) : -1;
  }
  std::vector<std::string> texts(const std::vector<Map>& entries) {
    std::vector<std::string> all;
    for (const auto& entry : entries) all.push_back(text(entry, "text"));
    return all;
  }

  std::string support() const {
    return desktop.directories.home() + "/Library/Application Support/com.zephyx.app";
  }
};

}  // namespace zephyx
