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
  void startKeyring() {
    // Before anything else asks for the service, or the bus starts a locked one.
    keyring_ = desktop_->start(
        {"sh", "-c",
         "printf word | exec gnome-keyring-daemon --foreground --unlock --components=secrets"});
    ASSERT_TRUE(waitFor([&] {
      return desktop_
                 ->run({"dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus",
                        "/", "org.freedesktop.DBus.NameHasOwner", "string:org.freedesktop.secrets"})
                 .output.find("true") != std::string::npos;
    }));
  }
  std::string witness(const std::string& service) {
    return desktop_->run({"secret-tool", "lookup", "service", service}).output;
  }

  std::optional<VirtualDesktop> desktop_;
  ChildProcess keyring_;
  LinuxKeychain keychain_;
};

}  // namespace zephyx
