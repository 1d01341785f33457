#pragma once

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "Platform/Linux/Clipboard/LinuxPasteboard.h"
#include "Tests/Desktop/ClipboardProgram.h"
#include "Tests/Desktop/RunUntil.h"
#include "Tests/Desktop/VirtualDesktop.h"

namespace zephyx {

/// A pasteboard on an X server of its own, and what it has announced.
class ClipboardTest : public testing::Test {
 protected:
  using Clock = std::chrono::steady_clock;
  static constexpr std::size_t twentyMegabytes = 20'000'000;

  struct Shown {
    std::int64_t changeCount;
    std::shared_ptr<PasteboardContents> contents;
    Clock::time_point moment;

    /// What a capture would take: the first preferred type's text; "" when there is none.
    std::string text() const { return contents->string(pasteboardType::string).value_or(""); }
  };

  ClipboardTest() : desktop_({.windowManager = false}) {
    desktop_.enter();
    static int argumentCount = 1;
    static char name[] = "clipboard";
    static char* arguments[] = {name, nullptr};
    application_ = std::make_unique<QCoreApplication>(argumentCount, arguments);
  }

  /// The host starts.
  LinuxPasteboard& open() {
    pasteboard_ = std::make_unique<LinuxPasteboard>(
        [](int) { return std::shared_ptr<RunningApplication>(); });
    return *pasteboard_;
  }
  LinuxPasteboard& openAndObserve() {
    auto& pasteboard = open();
    observation_ = pasteboard.observeChanges(
        {.forbidden = {"org.nspasteboard.ConcealedType", "org.nspasteboard.TransientType"},
         .preferred = {pasteboardType::fileUrl, pasteboardType::png, pasteboardType::tiff,
                       pasteboardType::url, pasteboardType::string}},
        [this] {
          shown_.push_back({pasteboard_->changeCount(), pasteboard_->contents(), Clock::now()});
        });
    return pasteboard;
  }

  /// Runs the main loop while another program does something.
  template <typename Action>
  auto during(Action action) {
    auto result = std::async(std::launch::async, std::move(action));
    EXPECT_TRUE(runUntil(
        [&] { return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    return result.get();
  }
  bool showsCopies(std::size_t count) {
    return runUntil([&] { return shown_.size() >= count; });
  }
  /// For copies that must not be announced.
  bool showsNothingMoreFor(std::chrono::milliseconds duration) {
    const auto before = shown_.size();
    return !runUntil([&] { return shown_.size() > before; }, duration);
  }

  VirtualDesktop desktop_;
  std::unique_ptr<QCoreApplication> application_;
  std::unique_ptr<LinuxPasteboard> pasteboard_;
  Registration observation_;
  std::vector<Shown> shown_;
};

inline std::vector<std::string> numberedTexts(const std::string& prefix, int count) {
  std::vector<std::string> texts;
  for (int i = 0; i < count; ++i) texts.push_back(prefix + std::to_string(i));
  return texts;
}

/// Not compressible into a pattern that a misplaced piece would repeat.
inline std::string longText(std::size_t size) {
  std::string text;
  text.reserve(size + 16);
  for (std::uint32_t i = 0; text.size() < size; ++i) text += std::to_string(i * 2654435761u) + ' ';
  text.resize(size);
  return text;
}

}  // namespace zephyx
