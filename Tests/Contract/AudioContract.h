#pragma once

#include <functional>
#include <utility>

#include "Platform/AudioHardware.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

class AudioContract : public ContractTest {
 protected:
  AudioHardware& audio() { return platform().audioHardware(); }
  ContractMicrophones& microphones() { return desktop().microphones(); }

  bool connect() {
    microphones().connect();
    return becomesTrue([&] { return audio().defaultInputDevice().has_value(); });
  }
};

TEST_P(AudioContract, ChangesOfTheHostAreReadBackAtOnceAndSeenByOtherPrograms) {
  EXPECT_FALSE(audio().defaultInputDevice());
  ASSERT_TRUE(connect());
  const auto device = *audio().defaultInputDevice();
  ASSERT_TRUE(audio().hasMute(device));
  ASSERT_TRUE(audio().hasInputVolume(device));
  for (const bool muted : {true, false}) {
    EXPECT_EQ(audio().setMute(device, muted), audioStatus::noErr);
    EXPECT_EQ(audio().mute(device), muted);
    EXPECT_EQ(microphones().isMuted(0), muted);
    EXPECT_FALSE(microphones().isMuted(1));
  }
  EXPECT_EQ(audio().setInputVolume(device, 0.25F), audioStatus::noErr);
  EXPECT_NEAR(audio().inputVolume(device).value_or(-1), 0.25F, 0.001F);
  EXPECT_NEAR(microphones().volume(0), 0.25F, 0.01F);
}

TEST_P(AudioContract, ChangesOfOtherProgramsAreAnnounced) {
  int announcements = 0;
  auto observer = audio().observeDefaultInputDevice([&] { ++announcements; });
  // True when the host hears of it and then finds `state`.
  const auto isHeard = [&](const std::function<bool()>& state) {
    return becomesTrue([&] { return announcements > 0 && state(); }) &&
           std::exchange(announcements, 0) > 0;
  };
  ASSERT_TRUE(connect());
  ASSERT_TRUE(isHeard([] { return true; }));
  const auto first = *audio().defaultInputDevice();

  microphones().setMute(0, true);
  EXPECT_TRUE(isHeard([&] { return audio().mute(first) == true; }));
  microphones().setVolume(0, 0.5F);
  EXPECT_TRUE(isHeard([&] { return audio().inputVolume(first).value_or(-1) < 0.6F; }));
  microphones().makeDefault(1);
  EXPECT_TRUE(isHeard([&] { return audio().defaultInputDevice() != first; }));
  const auto second = *audio().defaultInputDevice();
  EXPECT_EQ(audio().mute(second), false);
  microphones().setMute(1, true);
  EXPECT_TRUE(isHeard([&] { return audio().mute(second) == true; }));

  microphones().disconnect();
  EXPECT_TRUE(isHeard([&] { return !audio().defaultInputDevice(); }));
  EXPECT_FALSE(audio().hasMute(second));
  EXPECT_FALSE(audio().mute(second));
  EXPECT_FALSE(audio().inputVolume(second));
  EXPECT_NE(audio().setMute(second, false), audioStatus::noErr);
  EXPECT_NE(audio().setInputVolume(second, 1), audioStatus::noErr);

  observer.reset();
  desktop().pass(0.1);
  announcements = 0;
  ASSERT_TRUE(connect());
  desktop().pass(0.1);
  EXPECT_EQ(announcements, 0);
}

}  // namespace zephyx
