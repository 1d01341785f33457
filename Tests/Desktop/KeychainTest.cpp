#include "Tests/Desktop/KeychainTest.h"

#include <sys/stat.h>

#include <chrono>
#include <cstdlib>
#include <fstream>

namespace zephyx {
namespace {

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

TEST_F(KeychainTest, AStoreThatDoesNotComeUpIsNotWaitedForLong) {
  enter(false);
  const auto folder = desktop_->home();
  std::filesystem::create_directories(folder / "services");
  std::ofstream(folder / "services/store.service")
      << "[D-BUS Service]\nName=org.freedesktop.secrets\nExec=/bin/sleep 30\n";
  const auto address = "unix:path=" + (folder / "bus").string();
  std::ofstream(folder / "bus.conf")
      << "<busconfig><type>session</type><listen>" << address << "</listen><servicedir>"
      << (folder / "services").string()
      << "</servicedir><policy context='default'><allow send_destination='*'/>"
         "<allow receive_sender='*'/><allow own='*'/></policy></busconfig>";
  const auto bus = desktop_->start({"dbus-daemon", "--nofork", "--nopidfile", "--nosyslog",
                                    "--config-file=" + (folder / "bus.conf").string()});
  ASSERT_TRUE(waitFor([&] { return std::filesystem::exists(folder / "bus"); }));
  setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_TRUE(keychain_.isAvailable()) << "nothing is started to find that out";
  EXPECT_EQ(keychain_.password("one"), std::nullopt);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST_F(KeychainTest, TheKeeperOfSecretsMayGoAndComeBackAndTheBusMayGo) {
  enter(true);
  startKeyring();
  ASSERT_TRUE(keychain_.setPassword("one", bytesOf("kept")));
  for (int restart = 0; restart < 2; ++restart) {
    desktop_->stopKeyring();
    startKeyring();
    EXPECT_EQ(keychain_.password("one"), bytesOf("kept"));
    EXPECT_TRUE(keychain_.setPassword("two", bytesOf("kept too")));
    EXPECT_TRUE(keychain_.isAvailable());
  }
  desktop_->stopSessionBus();
  EXPECT_EQ(keychain_.password("one"), std::nullopt);
  EXPECT_FALSE(keychain_.setPassword("two", bytesOf("lost")));
  EXPECT_FALSE(keychain_.isAvailable());
}

TEST_F(KeychainTest, ReadsTheToolsCredentialsFromItsFileAndNeverChangesIt) {
  constexpr const char* service = "Claude Code-credentials";
  constexpr std::size_t maximumSize = 1'048'576;
  enter(false);
  const auto folder = desktop_->home() / ".claude";
  const auto file = folder / ".credentials.json";
  EXPECT_EQ(keychain_.password(service), std::nullopt);
  std::filesystem::create_directories(folder);
  EXPECT_EQ(keychain_.password(service), std::nullopt);

  const std::string contents = "{\"any\": \"bytes\\n\"}\n";
  std::ofstream(file) << contents;
  EXPECT_EQ(keychain_.password(service), bytesOf(contents));
  EXPECT_FALSE(keychain_.setPassword(service, bytesOf("other")));
  EXPECT_FALSE(keychain_.deletePassword(service));
  EXPECT_EQ(keychain_.password(service), bytesOf(contents));

  for (const std::size_t size : {maximumSize, maximumSize + 1}) {
    std::ofstream(file) << std::string(size, ' ');
    EXPECT_EQ(keychain_.password(service).has_value(), size == maximumSize);
  }
  std::filesystem::remove(file);
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);  // would hang who waits for a writer
  EXPECT_EQ(keychain_.password(service), std::nullopt);
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  EXPECT_EQ(keychain_.password(service), std::nullopt);
}

}  // namespace
}  // namespace zephyx
