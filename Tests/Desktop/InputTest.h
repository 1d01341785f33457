#pragma once

#include <gtest/gtest.h>

#include <QtWidgets/QApplication>
#include <memory>

#include "Tests/Desktop/RunUntil.h"
#include "Tests/Desktop/TargetProgram.h"
#include "Tests/Desktop/VirtualDesktop.h"

namespace zephyx {

/// This process as a toolkit program on a desktop of its own, with other programs beside it.
class InputTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  VirtualDesktop& desktop() { return *desktop_; }
  DesktopInput& input() { return desktop_->input(); }
  DesktopWindows& windows() { return desktop_->windows(); }

  /// Handles everything that the server had to say up to now.
  static void pumpAll();

  /// Arguments of setxkbmap, none to keep the layouts; the second one is in effect with `group` 1.
  void setLayout(const std::vector<std::string>& arguments, unsigned group = 0);

  VirtualDesktopOptions options_;

 private:
  std::unique_ptr<VirtualDesktop> desktop_;
  std::unique_ptr<QApplication> application_;
};

}  // namespace zephyx
