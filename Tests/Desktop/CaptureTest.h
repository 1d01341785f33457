#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Channel/MethodChannel.h"
#include "Platform/Platform.h"
#include "Platform/Registration.h"
#include "Runner/HotkeyId.h"
#include "Runner/SharedObjects.h"
#include "Tests/Channel/FakeMessenger.h"
#include "Tests/Desktop/TargetProgram.h"
#include "Tests/Desktop/VirtualDesktop.h"

namespace zephyx {

/// The host without its screens, in this process, on a desktop with real other programs: its
/// hotkeys are registered and the translate hotkey fetches the selection.
class CaptureTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  VirtualDesktop& desktop() { return *desktop_; }
  DesktopInput& input() { return desktop_->input(); }
  Platform& platform() { return *platform_; }

  /// As `waitFor`, with the host's main loop running meanwhile.
  [[nodiscard]] bool runUntil(const std::function<bool()>& condition,
                              std::chrono::milliseconds deadline = std::chrono::seconds(5));
  /// For things that must not happen.
  [[nodiscard]] bool runsWithout(const std::function<bool()>& condition,
                                 std::chrono::milliseconds duration);

  /// Presses Control+Alt+Super+T and keeps it down until the text is there. An empty string also
  /// stands for no text.
  std::string captured();
  /// What the clipboard gives to another program, while the host runs.
  std::string pasted(const std::string& target = "UTF8_STRING");
  /// The texts, else the kinds, of the entries that the history got.
  std::vector<std::string> entries() const;

  VirtualDesktopOptions options_;
  std::vector<HotkeyID> fired_;
  bool isCaptured_ = false;  ///< the capture that was begun last has ended

 private:
  std::unique_ptr<VirtualDesktop> desktop_;
  std::unique_ptr<Platform> platform_;
  std::unique_ptr<SharedObjects> shared_;
  Registration handler_;
  std::shared_ptr<FakeMessenger> history_ = std::make_shared<FakeMessenger>();
  std::shared_ptr<MethodChannel> channel_;
  std::optional<std::string> text_;
};

}  // namespace zephyx
