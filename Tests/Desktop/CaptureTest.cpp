#include "Tests/Desktop/CaptureTest.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <future>
#include <stdexcept>

#include "Channel/StandardMethodCodec.h"
#include "Platform/HotKeys.h"
#include "Runner/ClipboardMonitor.h"
#include "Runner/HotkeyManager.h"
#include "Runner/MenuChannel.h"
#include "Runner/SelectionCapture.h"

namespace zephyx {

void CaptureTest::SetUp() {
  desktop_ = std::make_unique<VirtualDesktop>(options_);
  desktop_->enter();
  desktop_->run({"setxkbmap", "us"});
  static char name[] = "zephyx-tests";
  static char* arguments[] = {name, nullptr};
  platform_ = makePlatform(1, arguments);
  ASSERT_TRUE(platform_);
  shared_ = std::make_unique<SharedObjects>(*platform_);

  auto& hotkeys = HotkeyManager::shared();
  hotkeys.loadConfigs(platform_->userDefaults());
  handler_ = platform_->hotKeys().setPressedHandler([this](HotKeyIdentity identity) {
    const auto id = hotkeyId(identity.id);
    ASSERT_TRUE(id);
    fired_.push_back(*id);
    if (*id != HotkeyID::translate) return;
    SelectionCapture::capture([this](std::optional<std::string> text) {
      text_ = std::move(text);
      isCaptured_ = true;
    });
  });
  hotkeys.registerAll();
  channel_ = makeMenuChannel(history_, platform_->systemLog());
  ClipboardMonitor::shared().methodChannel = channel_;
  ClipboardMonitor::shared().start();
}

void CaptureTest::TearDown() {
  handler_.reset();
  shared_.reset();
  channel_.reset();
  platform_.reset();
  desktop_.reset();
}

bool CaptureTest::runUntil(const std::function<bool()>& condition,
                           std::chrono::milliseconds deadline) {
  return waitFor(
      [&] {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return condition();
      },
      deadline);
}

bool CaptureTest::runsWithout(const std::function<bool()>& condition,
                              std::chrono::milliseconds duration) {
  return !runUntil(condition, duration);
}

std::string CaptureTest::captured() {
  isCaptured_ = false;
  text_.reset();
  const std::uint8_t keys[] = {key::Control, key::Alt, key::Super, key::T};
  for (const auto key : keys) input().pressKey(key);
  EXPECT_TRUE(runUntil([&] { return isCaptured_; })) << "the capture does not end";
  for (auto key = std::rbegin(keys); key != std::rend(keys); ++key) input().releaseKey(*key);
  EXPECT_TRUE(runUntil([&] { return input().pressedKeys().empty(); }));
  return text_.value_or("");
}

std::string CaptureTest::pasted(const std::string& target) {
  auto result = std::async(std::launch::async, [&] { return desktop_->pasted(target); });
  EXPECT_TRUE(runUntil(
      [&] { return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
  return result.get();
}

std::vector<std::string> CaptureTest::entries() const {
  std::vector<std::string> texts;
  for (const auto& sent : history_->sent) {
    const auto call = StandardMethodCodec::decodeCall(sent.message);
    if (!call || call->method != "clipboardEntryCaptured") continue;
    const auto* map = call->arguments.asMap();
    const auto* text = map ? map->find("text") : nullptr;
    const auto* kind = map ? map->find("type") : nullptr;
    texts.push_back(text && text->asString()   ? *text->asString()
                    : kind && kind->asString() ? *kind->asString()
                                               : "");
  }
  return texts;
}

}  // namespace zephyx
