#include <gtest/gtest.h>
#include <sys/resource.h>

#include "Platform/Linux/Pictures/LinuxImages.h"
#include "Tests/Linux/PngFile.h"

namespace zephyx {
namespace {

/// Small enough to be unpacked at once, and large enough to be unpacked on a thread.
constexpr std::uint32_t sides[] = {40, 700};

Bytes goodFile(std::uint32_t side) {
  PngFile png{side, side};
  return png.header().data(zlibPacked(png.randomRows(side))).end();
}

TEST(HostileImages, ATruncatedPngIsNoImage) {
  for (const auto side : sides) {
    auto file = goodFile(side);
    ASSERT_TRUE(LinuxImages().decode(file));
    const std::size_t step = side == 40 ? 1 : file.size() / 50;
    for (std::size_t length = 0; length < file.size(); length += step) {
      EXPECT_FALSE(LinuxImages().decode({file.data(), length})) << length;
    }
    file.pop_back();
    EXPECT_FALSE(LinuxImages().decode(file));
  }
}

TEST(HostileImages, AChangedByteOfThePictureIsNoticed) {
  for (const auto side : sides) {
    auto file = goodFile(side);
    const std::size_t step = side == 40 ? 1 : file.size() / 50;
    for (std::size_t at = 0; at < file.size() - 4; at += step) {
      file[at] ^= 0x20;
      EXPECT_FALSE(LinuxImages().decode(file)) << at;
      file[at] ^= 0x20;
    }
  }
}

TEST(HostileImages, DamageBehindRightChecksumsIsNoticed) {
  const struct {
    const char* name;
    std::function<void(PngFile&, Bytes& raw)> change;
    std::function<void(Bytes& packed)> changePacked;
    bool isImage = false;
  } cases[] = {
      {"whole", [](PngFile&, Bytes&) {}, {}, true},
      {"surplus data", [](PngFile&, Bytes& raw) { raw.resize(raw.size() + 100'000); }, {}, true},
      {"a row too few", [](PngFile& png, Bytes&) { ++png.high; }, {}},
      {"a byte too few", [](PngFile&, Bytes& raw) { raw.pop_back(); }, {}},
      {"unknown filter", [](PngFile&, Bytes& raw) { raw[0] = 5; }, {}},
      {"no palette", [](PngFile& png, Bytes&) { png.colorType = 3; }, {}},
      {"unknown kind", [](PngFile& png, Bytes&) { png.colorType = 5; }, {}},
      {"unknown depth", [](PngFile& png, Bytes&) { png.depth = 3; }, {}},
      {"no width", [](PngFile& png, Bytes&) { png.wide = 0; }, {}},
      {"no height", [](PngFile& png, Bytes&) { png.high = 0; }, {}},
      {"too many pixels", [](PngFile& png, Bytes&) { png.wide = png.high = 10'001; }, {}},
      {"far too wide", [](PngFile& png, Bytes&) { png.wide = 0x7fffffff; }, {}},
      {"wider still", [](PngFile& png, Bytes&) { png.wide = 0xffffffff; }, {}},
      {"wrong sum", {}, [](Bytes& packed) { packed.back() ^= 1; }},
      {"no sum", {}, [](Bytes& packed) { packed.resize(packed.size() - 4); }},
      {"wrong packing", {}, [](Bytes& packed) { packed[0] = 0x79; }},
      {"wrong block", {}, [](Bytes& packed) { packed[2] |= 6; }},
      {"no data", {}, [](Bytes& packed) { packed.clear(); }},
  };
  for (const auto side : sides) {
    for (const auto& [name, change, changePacked, isImage] : cases) {
      PngFile png{side, side};
      auto raw = png.randomRows(side);
      if (change) change(png, raw);
      auto packed = zlibPacked(raw);
      if (changePacked) changePacked(packed);
      EXPECT_EQ(LinuxImages().decode(png.header().data(packed).end()) != nullptr, isImage)
          << name << side;
    }
  }
}

TEST(HostileImages, BombsCostLittle) {
  const auto peak = [] {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
  };
  const auto before = peak();
  // A gigabyte of text and a profile, both packed, that nobody wants to read; a picture that
  // promises 90 million pixels and delivers few; a stream that goes on long after the last pixel.
  PngFile text{4, 4};
  text.header();
  Bytes packed = zlibPacked(Bytes(8 << 20));
  packed.insert(packed.begin(), {'k', 0, 0});
  for (int i = 0; i < 128; ++i) text.chunk("zTXt", packed);
  text.chunk("iCCP", packed);
  EXPECT_TRUE(LinuxImages().decode(text.data(zlibPacked(text.randomRows(1))).end()));
  PngFile promise{10'000, 9'000};
  EXPECT_FALSE(LinuxImages().decode(promise.header().data(zlibPacked(Bytes(1 << 20))).end()));
  PngFile endless{400, 400};
  EXPECT_TRUE(LinuxImages().decode(endless.header().data(zlibPacked(Bytes(64 << 20))).end()));
  // The test's own buffers are most of it.
  EXPECT_LT(peak() - before, 256);
}

TEST(HostileImages, WhatIsNoPictureIsNoImage) {
  const std::string cases[] = {
      "",
      "x",
      "\x89PNG\r\n\x1a\n",
      "plain text",
      "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect width='9' "
      "height='9'/></svg>",
      "#define x_width 8\n#define x_height 1\nstatic char x_bits[] = { 0xff };\n",
      "/* XPM */\nstatic char*x[]={\"1 1 1 1\",\"a c red\",\"a\"};\n",
      "P6 1 1 255 abc",
      "GIF89a",
      std::string("BM\0\0\0\0\0\0\0\0", 10),
      "\xff\xd8\xff\xe0 no jpeg",
      std::string("II*\0\xff\xff\xff\xff", 8),
      "RIFF\x10\xff\xff\xffWEBPVP8 ",
  };
  for (const auto& data : cases) {
    EXPECT_FALSE(
        LinuxImages().decode({reinterpret_cast<const std::uint8_t*>(data.data()), data.size()}))
        << data;
  }
}

}  // namespace
}  // namespace zephyx
