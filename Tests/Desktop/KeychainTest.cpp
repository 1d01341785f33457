#include <gtest/gtest.h>

#include <optional>

#include "Platform/Linux/Keychain/LinuxKeychain.h"
#include "Tests/Desktop/VirtualDesktop.h"
#include "Tests/Desktop/WaitFor.h"

namespace zephyx {
namespace {

Bytes bytesOf(std::string_view text) {
  return {text.begin(), text.end()};
}

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

TEST_F(KeychainTest, KeepsOneSecretForEachServiceThatOtherProgramsOfTheUserCanFind) {
  enter(true);
  startKeyring();
  ASSERT_TRUE(keychain_.isAvailable());
  EXPECT_EQ(keychain_.password("one"), std::nullopt);
  EXPECT_TRUE(keychain_.setPassword("one", bytesOf("first")));
  EXPECT_TRUE(keychain_.setPassword("one", bytesOf("s3cret ñ")));
  const Bytes binary = {0, 255, 10, 0};
  EXPECT_TRUE(keychain_.setPassword("two", binary));
  EXPECT_EQ(keychain_.password("one"), bytesOf("s3cret ñ"));
  EXPECT_EQ(keychain_.password("two"), binary);
  EXPECT_EQ(witness("one"), "s3cret ñ");
  EXPECT_TRUE(keychain_.deletePassword("one"));
  EXPECT_TRUE(keychain_.deletePassword("one"));
  EXPECT_EQ(keychain_.password("one"), std::nullopt);
  EXPECT_EQ(keychain_.password("two"), binary);
}

TEST_F(KeychainTest, SaysWhenTheSessionKeepsNoSecrets) {
  enter(false);
  EXPECT_FALSE(keychain_.isAvailable());
  EXPECT_EQ(keychain_.password("one"), std::nullopt);
  EXPECT_FALSE(keychain_.setPassword("one", bytesOf("lost")));
  EXPECT_FALSE(keychain_.deletePassword("one"));
}

}  // namespace
}  // namespace zephyx
