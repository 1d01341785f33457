#include "Channel/StandardMessageCodec.h"

#include <gtest/gtest.h>

#include <limits>

#include "Tests/Channel/Bytes.h"

namespace zephyx {
namespace {

Value text(std::size_t size) {
  return std::string(size, 'a');
}
Bytes as(std::size_t size) {
  return Bytes(size, 'a');
}

const double infinity = std::numeric_limits<double>::infinity();

TEST(StandardMessageCodec, encodesToTheByteAndBack) {
  const std::tuple<const char*, Value, Bytes> cases[] = {
      {"null", {}, hex("00")},
      {"true", true, hex("01")},
      {"false", false, hex("02")},
      {"int32", std::int32_t{-2}, hex("03 feffffff")},
      {"int32Least", std::numeric_limits<std::int32_t>::min(), hex("03 00000080")},
      {"int64", std::int64_t{0x123456789a}, hex("04 9a78563412000000")},
      {"int64OfASmallValue", std::int64_t{-1}, hex("04 ffffffffffffffff")},
      {"bigInteger", BigInteger{"1ff"}, hex("05 03 316666")},
      {"double", 1.5, hex("06 00000000000000 000000000000f83f")},
      {"infinity", -infinity, hex("06 00000000000000 000000000000f0ff")},
      {"emptyString", "", hex("07 00")},
      {"string", "h\u00e9\u20ac\U0001F600", hex("07 0a 68 c3a9 e282ac f09f9880")},
      {"stringWithNul", std::string("a\0b", 3), hex("07 03 610062")},
      {"uint8List", std::vector<std::uint8_t>{0, 255}, hex("08 02 00ff")},
      {"int32List", std::vector<std::int32_t>{1, -1}, hex("09 02 0000 01000000 ffffffff")},
      {"int64List", std::vector<std::int64_t>{2}, hex("0a 01 000000000000 0200000000000000")},
      {"float64List", std::vector<double>{1.5}, hex("0b 01 000000000000 000000000000f83f")},
      {"float32List", std::vector<float>{1.5F}, hex("0e 01 0000 0000c03f")},
      {"emptyInt32ListIsPadded", std::vector<std::int32_t>{}, hex("09 00 0000")},
      {"emptyFloat64ListIsPadded", std::vector<double>{}, hex("0b 00 000000000000")},
      {"emptyList", List{}, hex("0c 00")},
      {"emptyMap", Map{}, hex("0d 00")},
      {"list", List{{}, true, "a"}, hex("0c 03 00 01 07 01 61")},
      {"mapKeepsItsOrder", Map{{"b", 1}, {"a", {}}}, hex("0d 02 07 01 62 03 01000000 07 01 61 00")},
      {"keysOfAnyKind", Map{{1, 2}, {{}, List{}}, {Map{}, false}},
       hex("0d 03 03 01000000 03 02000000 00 0c 00 0d 00 02")},
      {"nested", List{Map{{"k", List{Value(List{})}}}}, hex("0c 01 0d 01 07 01 6b 0c 01 0c 00")},
      // The double's type byte is at offset 7, so there is nothing to pad.
      {"alignedWithoutPadding", List{{}, {}, {}, {}, {}, 1.5},
       hex("0c 06 0000000000 06 000000000000f83f")},
      {"alignedWithOneByteShort", List{{}, {}, {}, {}, 1.5},
       hex("0c 05 00000000 06 00 000000000000f83f")},
      {"alignedFromTheMessageStart", List{true, std::vector<float>{1.5F}, 1.5},
       hex("0c 03 01 0e 01 000000 0000c03f 06 000000 000000000000f83f")},
      {"largestOneByte", text(253), joined(hex("07 fd"), as(253))},
      {"smallestTwoBytes", text(254), joined(hex("07 fe fe00"), as(254))},
      {"twoBytes", text(255), joined(hex("07 fe ff00"), as(255))},
      {"largestTwoBytes", text(65'535), joined(hex("07 fe ffff"), as(65'535))},
      {"smallestFourBytes", text(65'536), joined(hex("07 ff 00000100"), as(65'536))},
      {"list", List(300), joined(hex("0c fe 2c01"), Bytes(300))},
      {"map", Map{{text(254), {}}}, joined(hex("0d 01 07 fe fe00"), as(254), hex("00"))}};
  for (const auto& [name, value, bytes] : cases) {
    SCOPED_TRACE(name);
    EXPECT_EQ(StandardMessageCodec::encode(value), bytes);
    const auto decoded = StandardMessageCodec::decode(bytes);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(*decoded, value);
    EXPECT_EQ(decoded->storage().index(), value.storage().index());
  }
}

TEST(StandardMessageCodec, decodesWhatItWouldEncodeDifferently) {
  EXPECT_EQ(StandardMessageCodec::decode({}), Value());
  EXPECT_EQ(StandardMessageCodec::decode(hex("07 ff 01000000 61")), Value("a")) << "long size form";
  EXPECT_EQ(StandardMessageCodec::decode(hex("06 11223344556677 000000000000f83f")), Value(1.5))
      << "padding that is not zero";
}

TEST(StandardMessageCodec, readsAlignedNumbersFromUnalignedMemory) {
  const Bytes message = StandardMessageCodec::encode(List{1.5, std::vector<std::int64_t>{7}});
  const Bytes shifted = joined(hex("ff"), message);
  EXPECT_EQ(StandardMessageCodec::decode(BytesView(shifted).subspan(1)),
            Value(List{1.5, std::vector<std::int64_t>{7}}));
}

TEST(Value, integersOfBothWidthsAreOneKind) {
  EXPECT_EQ(Value(std::int32_t{5}), Value(std::int64_t{5}));
  EXPECT_NE(Value(std::int32_t{5}), Value(std::int64_t{0x100000005}));
  EXPECT_NE(Value(1), Value(true));
  EXPECT_NE(Value(1), Value(1.0));
  EXPECT_EQ(Value(std::int64_t{5}).asInteger(), 5);
  EXPECT_EQ(Value(5).asNumber(), 5.0);
  EXPECT_EQ(Value("5").asInteger(), std::nullopt);
}

TEST(Map, equalsInAnyOrderButNotWithOtherPairs) {
  const Map map{{"a", 1}, {"b", List{2}}};
  EXPECT_EQ(map, (Map{{"b", List{2}}, {"a", 1}}));
  EXPECT_NE(map, (Map{{"a", 1}, {"b", List{3}}}));
  EXPECT_NE(map, (Map{{"a", 1}, {"c", List{2}}}));
  EXPECT_NE(map, (Map{{"a", 1}}));
  EXPECT_NE((Map{{"a", 1}, {"a", 1}}), (Map{{"a", 1}, {"b", 1}})) << "a pair counts once";
}

TEST(Map, findsAndReplacesByKey) {
  Map map{{1, "number"}, {"1", "text"}};
  map.set("1", "new");
  map.set("2", true);
  EXPECT_EQ(map, (Map{{1, "number"}, {"1", "new"}, {"2", true}}));
  ASSERT_TRUE(map.find("1"));
  EXPECT_EQ(*map.find("1"), Value("new"));
  EXPECT_FALSE(map.find("3"));
}

}  // namespace
}  // namespace zephyx
