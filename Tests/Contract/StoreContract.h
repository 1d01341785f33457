#pragma once

#include "Platform/Directories.h"
#include "Platform/Image.h"
#include "Platform/UserDefaults.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

/// User defaults, folders and pictures.
class StoreContract : public ContractTest {
 protected:
  UserDefaults& defaults() { return platform().userDefaults(); }
  Images& images() { return platform().images(); }
};

TEST_P(StoreContract, UserDefaultsKeepKindsApartAndSurviveARestart) {
  const std::string text = "line\nñ \"quoted\" = [x]";
  const Bytes blob = {0, 255, '\n', '"', 128};
  defaults().setString("flutter.text", text);
  defaults().setData("hotkeys.v1", blob);
  defaults().setBoolean("shown", false);
  defaults().setNumber("one", 1);
  defaults().setNumber("share", 0.425);
  defaults().setString("removed", "x");
  defaults().removeObject("removed");
  defaults().removeObject("never there");

  const auto check = [&](const UserDefaults& read) {
    EXPECT_EQ(read.string("flutter.text"), text);
    EXPECT_EQ(read.data("hotkeys.v1"), blob);
    EXPECT_EQ(read.boolean("shown"), false);
    EXPECT_EQ(read.number("one"), 1);
    EXPECT_EQ(read.number("share"), 0.425);
    EXPECT_FALSE(read.data("flutter.text"));
    EXPECT_FALSE(read.string("hotkeys.v1"));
    EXPECT_FALSE(read.string("share"));
    EXPECT_FALSE(read.boolean("one"));
    EXPECT_FALSE(read.boolean("flutter.text"));
    EXPECT_FALSE(read.number("shown"));
    EXPECT_FALSE(read.string("removed"));
    EXPECT_FALSE(read.string("never there"));
  };
  check(defaults());
  std::unique_ptr<UserDefaults> reopened;
  EXPECT_TRUE(becomesTrue([&] {
    reopened = desktop().reopenUserDefaults();
    return reopened->data("hotkeys.v1").has_value();
  }));
  check(*reopened);

  defaults().setString("hotkeys.v1", "now a string");
  EXPECT_FALSE(defaults().data("hotkeys.v1"));
  EXPECT_EQ(defaults().string("hotkeys.v1"), "now a string");
}

TEST_P(StoreContract, FoldersAreAbsolute) {
  const auto support = platform().directories().applicationSupport();
  ASSERT_TRUE(support);
  for (const auto& path : {*support, platform().directories().home()}) {
    EXPECT_EQ(path.front(), '/');
    EXPECT_NE(path.back(), '/');
  }
}

TEST_P(StoreContract, PicturesDecodeScaleAndEncode) {
  const auto image = images().decode(desktop().encodedPicture({400, 100}));
  ASSERT_TRUE(image);
  EXPECT_EQ(image->pixelSize(), (PixelSize{400, 100}));
  EXPECT_NEAR(image->size().width, 400, 1);
  EXPECT_NEAR(image->size().height, 100, 1);

  const auto small = image->drawnAtSize({240, 60});
  ASSERT_TRUE(small);
  EXPECT_EQ(small->size(), (Size{240, 60}));
  const auto again = images().decode(small->pngRepresentation());
  ASSERT_TRUE(again);
  EXPECT_EQ(again->pixelSize(), small->pixelSize());
  EXPECT_FALSE(image->drawnAtSize({0, 60}));
}

}  // namespace zephyx
