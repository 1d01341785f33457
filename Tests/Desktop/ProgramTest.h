#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "Tests/Desktop/TargetProgram.h"
#include "Tests/Desktop/VirtualDesktop.h"
#include "Tests/Desktop/ZephyxProcess.h"

namespace zephyx {

/// Cases that share one desktop with one running program. A case leaves the panel closed.
class ProgramTest : public testing::Test {
 protected:
  static void SetUpTestSuite() { startDesktop({}); }
  static void TearDownTestSuite();
  static void startDesktop(const VirtualDesktopOptions& options);
  static void startProgram(const Environment& additions = {});

  void SetUp() override;
  void TearDown() override;

  VirtualDesktop& desktop() { return *desktop_; }
  DesktopInput& input() { return desktop_->input(); }
  DesktopWindows& windows() { return desktop_->windows(); }
  ZephyxProcess& program() { return *program_; }

  [[nodiscard]] bool openPanel() { return program_->openPanel(); }
  [[nodiscard]] bool panelHasKeyboard() { return program_->hasKeyboard(program_->panel()); }
  [[nodiscard]] bool waitUntilPanelIsGone() {
    return waitFor([&] { return !program_->panel(); });
  }
  /// The texts that were added to the history since `SetUp`, oldest first.
  std::vector<HistoryRow> newEntries() const;
  [[nodiscard]] bool waitForNewEntries(std::size_t count) const;

  static std::unique_ptr<VirtualDesktop> desktop_;
  static std::unique_ptr<ZephyxProcess> program_;

 private:
  std::int64_t lastIdBefore_ = 0;
};

}  // namespace zephyx
