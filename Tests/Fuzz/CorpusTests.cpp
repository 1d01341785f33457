#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "Tests/Fuzz/FuzzTargets.h"

namespace zephyx {
namespace {

struct Target {
  const char* name;
  const char* (*brokenProperty)(BytesView bytes);
};

void PrintTo(const Target& target, std::ostream* out) {
  *out << target.name;
}

class FuzzCorpusTest : public testing::TestWithParam<Target> {};

TEST_P(FuzzCorpusTest, EveryFileKeepsTheProperties) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry :
       std::filesystem::directory_iterator(std::string(FUZZ_CORPUS "/") + GetParam().name)) {
    files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  EXPECT_FALSE(files.empty());
  for (const auto& path : files) {
    std::cout << path.filename().string() << std::endl;  // the last one is the one that crashed
    std::ifstream file(path, std::ios::binary);
    const Bytes bytes{std::istreambuf_iterator<char>(file), {}};
    const char* broken = GetParam().brokenProperty(bytes);
    EXPECT_FALSE(broken) << broken << ": " << path;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Targets, FuzzCorpusTest,
    testing::Values(Target{"appcast", brokenAppcastProperty}, Target{"chat", brokenChatProperty},
                    Target{"clipboard", brokenClipboardProperty},
                    Target{"codec", brokenCodecProperty}, Target{"hotkeys", brokenHotkeysProperty},
                    Target{"picture", brokenPictureProperty}, Target{"png", brokenPngProperty},
                    Target{"session_log", brokenSessionLogProperty},
                    Target{"usage_reply", brokenUsageReplyProperty}),
    testing::PrintToStringParamName());

}  // namespace
}  // namespace zephyx
