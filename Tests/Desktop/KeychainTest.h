#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "Platform/Linux/Keychain/LinuxKeychain.h"
#include "Tests/Desktop/VirtualDesktop.h"

namespace zephyx {

inline Bytes bytesOf(std::string_view text) {
  return {text.begin(), text.end()};
}

/// A session with or without a real keeper of secrets.
class KeychainTest : public testing::Test {
 protected:
  void enter(bool sessionBus) {
    desktop_.emplace(VirtualDesktopOptions{.windowManager = false, .sessionBus = sessionBus});
    desktop_->enter();
  }
  void startKeyring() { desktop_->startKeyring(); }
  std::string witness(const std::string& service) {
    return desktop_->run({"secret-tool", "lookup", "service", service}).output;
  }

  std::optional<VirtualDesktop> desktop_;
  LinuxKeychain keychain_;
};

}  // namespace zephyx
