#include "Platform/PrivateFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "Tests/Simulated/SimulatedDirectories.h"

namespace zephyx {
namespace {

namespace fs = std::filesystem;

class PrivateFileTest : public testing::Test {
 protected:
  static unsigned permissions(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 0777u;
  }
  static std::string contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  SimulatedDirectories directories_;
  const std::string folder_ = directories_.home() + "/a/b";
  const Bytes contents_ = {'n', 'e', 'w', 0, 255};
};

TEST_F(PrivateFileTest, FoldersAreForTheUserAloneAndExistingOnesAreLeftAsTheyAre) {
  EXPECT_TRUE(makePrivateFolder(folder_));
  EXPECT_EQ(permissions(folder_), 0700u);
  EXPECT_EQ(permissions(directories_.home() + "/a"), 0700u);
  fs::permissions(folder_, fs::perms(0755));
  EXPECT_TRUE(makePrivateFolder(folder_));
  EXPECT_EQ(permissions(folder_), 0755u);

  std::ofstream(folder_ + "/file") << "in the way";
  EXPECT_FALSE(makePrivateFolder(folder_ + "/file"));
  EXPECT_FALSE(makePrivateFolder(folder_ + "/file/c"));
}

TEST_F(PrivateFileTest, AWriteReplacesTheWholeFileForTheUserAlone) {
  ASSERT_TRUE(makePrivateFolder(folder_));
  const auto path = folder_ + "/file";
  std::ofstream(path) << "something longer than what comes";
  fs::permissions(path, fs::perms(0644));
  EXPECT_TRUE(writePrivateFile(path, contents_));
  EXPECT_EQ(contentsOf(path), std::string(contents_.begin(), contents_.end()));
  EXPECT_EQ(permissions(path), 0600u);
  EXPECT_TRUE(writePrivateFile(path, {}));
  EXPECT_EQ(contentsOf(path), "");
}

TEST_F(PrivateFileTest, AWriteThatFailsLeavesNothingBehind) {
  EXPECT_FALSE(writePrivateFile(folder_ + "/file", contents_));
  ASSERT_TRUE(makePrivateFolder(folder_ + "/folder/full"));
  EXPECT_FALSE(writePrivateFile(folder_ + "/folder", contents_));
  const fs::directory_iterator entries(folder_);
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

}  // namespace
}  // namespace zephyx
