#include <gtest/gtest.h>
#include <signal.h>

#include <optional>

#include "Platform/Linux/Audio/LinuxAudioHardware.h"
#include "Platform/Linux/LinuxDispatch.h"
#include "Tests/Desktop/PulseServer.h"
#include "Tests/Desktop/RunUntil.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// The service on a real server.
class AudioTest : public testing::Test {
 protected:
  AudioTest() : desktop_({.windowManager = false}) {
    desktop_.enter();
    static int count = 1;
    static char name[] = "desktop_audio_tests";
    static char* arguments[] = {name, nullptr};
    application_.emplace(count, arguments);
    dispatch_.emplace();
    audio_.emplace(dispatch_->mainQueue());
    startServer();
    audio_->connect();
  }

  LinuxAudioHardware& audio() { return *audio_; }
  PulseServer& server() { return *server_; }
  void startServer() { server_.emplace(desktop_); }
  [[nodiscard]] bool isThere() { return audio().defaultInputDevice().has_value(); }
  std::optional<bool> isMuted() {
    const auto device = audio().defaultInputDevice();
    return device ? audio().mute(*device) : std::nullopt;
  }

 private:
  VirtualDesktop desktop_;
  std::optional<QCoreApplication> application_;
  std::optional<LinuxDispatch> dispatch_;
  std::optional<PulseServer> server_;
  std::optional<LinuxAudioHardware> audio_;
};

TEST_F(AudioTest, TheServerMayGoAndComeBack) {
  for (const bool isKilled : {false, true}) {
    ASSERT_TRUE(runUntil([&] { return isThere(); }));
    const auto device = *audio().defaultInputDevice();
    isKilled ? server().process().kill() : server().process().terminate();
    EXPECT_TRUE(runUntil([&] { return !isThere(); }));
    EXPECT_EQ(audio().setMute(device, true), audioStatus::badDevice);
    startServer();
  }
  ASSERT_TRUE(runUntil([&] { return isThere(); }));
  EXPECT_EQ(audio().setMute(*audio().defaultInputDevice(), true), audioStatus::noErr);
  EXPECT_EQ(isMuted(), true);
  EXPECT_TRUE(server().isMuted("mic0"));
}

TEST_F(AudioTest, AServerThatHangsIsNotWaitedForAndItsStateIsNotGuessed) {
  ASSERT_TRUE(runUntil([&] { return isThere(); }));
  const auto device = *audio().defaultInputDevice();
  server().process().signal(SIGSTOP);
  const auto start = steady_clock::now();
  EXPECT_EQ(audio().setMute(device, true), audioStatus::unspecified);
  EXPECT_LT(steady_clock::now() - start, milliseconds(500) * patience());
  EXPECT_EQ(isMuted(), false);
  // It does so in the end, and that is heard.
  server().process().signal(SIGCONT);
  EXPECT_TRUE(runUntil([&] { return isMuted() == true; }));
}

}  // namespace
}  // namespace zephyx
