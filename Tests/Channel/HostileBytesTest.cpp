#include <gtest/gtest.h>

#include <array>
#include <random>

#include "Channel/StandardMessageCodec.h"
#include "Channel/StandardMethodCodec.h"
#include "Channel/Utf8.h"
#include "Tests/Channel/AllocatedBytes.h"
#include "Tests/Channel/Bytes.h"
#include "Tests/Fuzz/FuzzTargets.h"

namespace zephyx {
namespace {

Bytes repeated(const Bytes& unit, std::size_t times) {
  Bytes bytes;
  for (; times > 0; --times) bytes.insert(bytes.end(), unit.begin(), unit.end());
  return bytes;
}

TEST(HostileBytes, areRefused) {
  const std::pair<const char*, Bytes> cases[] = {
      {"int32", hex("03 000000")},
      {"int64", hex("04 00000000000000")},
      {"doubleInItsPadding", hex("06 0000")},
      {"double", hex("06 00000000000000 00000000")},
      {"stringWithoutSize", hex("07")},
      {"string", hex("07 02 61")},
      {"sizeOfTwoBytes", hex("07 fe 01")},
      {"sizeOfFourBytes", hex("07 ff 010000")},
      {"bytes", hex("08 02 61")},
      {"listOfDoubles", hex("0b 02 000000000000 000000000000f83f")},
      {"list", hex("0c 02 00")},
      {"mapWithoutItsValue", hex("0d 01 00")},
      {"listInAList", hex("0c 02 0c 01 00")},
      {"unknownType", hex("0f")},
      {"lastType", hex("ff")},
      {"bytesLeftOver", hex("00 00")},
      {"nestedTooDeep", joined(repeated(hex("0c 01"), 65), hex("00"))},
      {"nestedTooDeepInKeys", joined(repeated(hex("0d 01"), 65), hex("00"), Bytes(65))},
      {"nestedVeryDeep", repeated(hex("0c 01"), 100'000)},
      {"string", hex("07 ff ffffffff 61")},
      {"bytes", hex("08 ff ffffffff 61")},
      {"int64List", hex("0a ff ffffffff 0000")},
      {"list", hex("0c ff ffffffff 00")},
      {"map", hex("0d ff ffffffff 00 00")},
      {"mapWithHalfItsPairs", hex("0d 04 00 00 00 00")}};
  for (const auto& [name, bytes] : cases) {
    SCOPED_TRACE(name);
    EXPECT_EQ(StandardMessageCodec::decode(bytes), std::nullopt);
    EXPECT_EQ(StandardMethodCodec::decodeCall(joined(hex("07 01 6d"), bytes)), std::nullopt);
    EXPECT_EQ(StandardMethodCodec::decodeReply(joined(hex("00"), bytes)), std::nullopt);
  }
}

TEST(HostileBytes, nestingUpToTheLimitIsFine) {
  const Bytes deepest =
      joined(repeated(hex("0c 01"), StandardMessageCodec::maximumDepth), hex("00"));
  EXPECT_TRUE(StandardMessageCodec::decode(deepest));
}

TEST(HostileBytes, costNoMemoryBeyondASmallMultipleOfTheMessage) {
  constexpr std::size_t size = 1'000'000;
  // Every list claims all bytes that are left, which its own parent has claimed as well.
  Bytes greedy;
  for (int depth = 0; depth < StandardMessageCodec::maximumDepth; ++depth) {
    const auto left = static_cast<std::uint32_t>(size - greedy.size() - 6);
    for (const int part : {0x0c, 0xff}) greedy.push_back(static_cast<std::uint8_t>(part));
    for (int shift = 0; shift < 32; shift += 8)
      greedy.push_back(static_cast<std::uint8_t>(left >> shift));
  }
  greedy.resize(size);
  Bytes nulls = joined(hex("0c ff 40420f00"), Bytes(size));
  Bytes lists = joined(hex("0c ff 20a10700"), repeated(hex("0c 00"), size / 2));
  for (const Bytes& message : {greedy, nulls, lists}) {
    const std::size_t before = allocatedBytes();
    const auto decoded = StandardMessageCodec::decode(message);
    EXPECT_LE(allocatedBytes() - before, (sizeof(Value) + 1) * message.size());
  }
}

TEST(HostileBytes, comparingDeepMapsTakesNoExponentialTime) {
  const auto nested = [](Value value) {
    for (int depth = 0; depth < StandardMessageCodec::maximumDepth / 2; ++depth) {
      value = Map{{Map{{"value", value}}, depth}};
    }
    return value;
  };
  EXPECT_NE(nested(1), nested(2));
  EXPECT_EQ(nested(1), nested(1));
}

// The validator treats blocks, tails and what lies between them differently.
TEST(Utf8, isJudgedAlikeAtEveryOffset) {
  const std::tuple<const char*, bool, Bytes> cases[] = {
      {"ascii", true, hex("00 7f")},
      {"twoBytes", true, hex("c280 dfbf")},
      {"threeBytes", true, hex("e0a080 ed9fbf ee8080 efbfbf")},
      {"fourBytes", true, hex("f0908080 f48fbfbf")},
      {"loneContinuation", false, hex("80")},
      {"overlongOfTwo", false, hex("c1bf")},
      {"overlongOfThree", false, hex("e09fbf")},
      {"overlongOfFour", false, hex("f08fbfbf")},
      {"firstSurrogate", false, hex("eda080")},
      {"lastSurrogate", false, hex("edbfbf")},
      {"above10FFFF", false, hex("f4908080")},
      {"leadF5", false, hex("f5808080")},
      {"byteFF", false, hex("ff")},
      {"cutAfterOneOfTwo", false, hex("c2")},
      {"cutAfterTwoOfThree", false, hex("e282")},
      {"cutAfterThreeOfFour", false, hex("f09f98")},
      {"leadInsteadOfContinuation", false, hex("e2c2a9")},
      {"oneContinuationTooMany", false, hex("c2a9a9")}};
  for (const auto& [name, valid, sequence] : cases) {
    SCOPED_TRACE(name);
    for (std::size_t before = 0; before < 140; ++before) {
      for (const std::size_t after : {0, 1, 5, 70}) {
        const Bytes bytes = joined(Bytes(before, 'x'), sequence, Bytes(after, 'x'));
        const std::string text(bytes.begin(), bytes.end());
        ASSERT_EQ(isValidUtf8(text), valid) << before << " before, " << after << " after";
      }
    }
  }
}

TEST(HostileBytes, invalidTextIsRefusedWhereverTextStands) {
  for (const char* message : {"07 02 c1bf", "05 01 ff", "0d 01 07 01 80 00", "0c 01 07 01 80"}) {
    EXPECT_EQ(StandardMessageCodec::decode(hex(message)), std::nullopt) << message;
  }
}

// A short, repeatable stand-in for the fuzz target.
TEST(HostileBytes, mutatedMessagesKeepTheCodecsProperties) {
  const std::vector<double> doubles{1.5, -0.0};
  const std::array seeds{
      StandardMessageCodec::encode(List{1, std::int64_t{1} << 40, BigInteger{"ff"}, 2.5, {}, true}),
      StandardMessageCodec::encode(
          Map{{"text", "h\u00e9\u20ac\U0001F600"}, {1, List{doubles, Map{}}}}),
      StandardMessageCodec::encode(List{std::vector<std::uint8_t>{1, 2},
                                        std::vector<std::int32_t>{3}, std::vector<std::int64_t>{4},
                                        std::vector<float>{5}}),
      StandardMessageCodec::encode(std::string(300, 'a')),
      StandardMethodCodec::encodeCall("method", Map{{"token", "a"}, {"gen", 1}}),
      StandardMethodCodec::encodeReply(MethodError{"code", "message", List{1}}),
  };
  std::mt19937 random(20'240'517);  // NOLINT: the same run every time
  const auto below = [&](std::size_t limit) { return random() % limit; };
  constexpr std::array<std::uint8_t, 8> telling{0, 1, 7, 12, 13, 0x80, 0xfe, 0xff};
  std::size_t decoded = 0;
  for (int round = 0; round < 60'000; ++round) {
    Bytes bytes = seeds[below(seeds.size())];
    for (std::size_t mutations = 1 + below(3); mutations > 0 && !bytes.empty(); --mutations) {
      const std::size_t at = below(bytes.size());
      switch (below(4)) {
        case 0:
          bytes[at] = telling[below(telling.size())];
          break;
        case 1:
          bytes[at] ^= static_cast<std::uint8_t>(1U << below(8));
          break;
        case 2:
          bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(at), telling[below(8)]);
          break;
        default:
          bytes.resize(at);
          bytes = joined(bytes, seeds[below(seeds.size())]);
      }
    }
    const char* broken = brokenCodecProperty(bytes);
    ASSERT_FALSE(broken) << broken << ", round " << round;
    if (StandardMessageCodec::decode(bytes)) ++decoded;
  }
  EXPECT_GT(decoded, 5'000U) << "too few mutations decode for the properties to mean anything";
}

}  // namespace
}  // namespace zephyx
