#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "Platform/Platform.h"
#include "Platform/Registration.h"
#include "Runner/HotkeyId.h"
#include "Runner/SharedObjects.h"
#include "Tests/Desktop/RunUntil.h"
#include "Tests/Desktop/VirtualDesktop.h"

namespace zephyx {

/// The host without its screens, in this process, with its hotkeys registered.
class CaptureTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  VirtualDesktop& desktop() { return *desktop_; }
  DesktopInput& input() { return desktop_->input(); }
  Platform& platform() { return *platform_; }

  VirtualDesktopOptions options_;
  std::vector<HotkeyID> fired_;

 private:
  std::unique_ptr<VirtualDesktop> desktop_;
  std::unique_ptr<Platform> platform_;
  std::unique_ptr<SharedObjects> shared_;
  Registration handler_;
};

}  // namespace zephyx
