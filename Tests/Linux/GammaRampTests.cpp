#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "Platform/Linux/Displays/RampFile.h"
#include "Tests/Desktop/TemporaryDirectory.h"

namespace zephyx {
namespace {

/// Blue light is filtered out, as at night.
GammaRamp warm() {
  auto ramp = GammaRamp::identity(256);
  for (auto& level : ramp.blue) level = static_cast<std::uint16_t>(level / 2);
  return ramp;
}

TEST(GammaRampTest, KnowsItselfDimmedAndNothingElse) {
  const auto original = warm();
  for (const double maximum : {0.15, 0.5, 0.9}) {
    EXPECT_TRUE(original.dimmed(maximum).isDimmed(original)) << maximum;
  }
  auto coarse = original.dimmed(0.4);
  for (auto& level : coarse.red) level = static_cast<std::uint16_t>(level & 0xFF00);
  EXPECT_TRUE(coarse.isDimmed(original));

  EXPECT_FALSE(original.isDimmed(original));
  EXPECT_FALSE(original.isDimmed(original.dimmed(0.5)));
  EXPECT_FALSE(GammaRamp::identity(256).dimmed(0.5).isDimmed(original));
  EXPECT_FALSE(GammaRamp::identity(1024).dimmed(0.5).isDimmed(GammaRamp::identity(256)));
  EXPECT_FALSE(GammaRamp{}.isDimmed(original));
  EXPECT_FALSE(GammaRamp{}.isDimmed(GammaRamp{}));
}

TEST(GammaRampTest, TheFileKeepsRampsUntilThereAreNoneAndADamagedOneIsEmpty) {
  const TemporaryDirectory folder;
  const auto path = folder.path() / "ramps";
  const RampFile file(path.string());
  EXPECT_TRUE(file.read().empty());
  const RampFile::Ramps ramps{{63, GammaRamp::identity(1024)}, {64, warm()}};
  file.write(ramps);
  EXPECT_EQ(file.read(), ramps);

  const auto size = std::filesystem::file_size(path);
  for (const auto length : {size - 1, size / 2, std::uintmax_t{3}, std::uintmax_t{0}}) {
    std::filesystem::resize_file(path, length);
    EXPECT_TRUE(file.read().empty()) << length;
  }
  std::ofstream(path) << std::string(64, '\xff');
  EXPECT_TRUE(file.read().empty());

  file.write({});
  EXPECT_FALSE(std::filesystem::exists(path));
  RampFile("").write(ramps);
  EXPECT_TRUE(RampFile("").read().empty());
}

}  // namespace
}  // namespace zephyx
