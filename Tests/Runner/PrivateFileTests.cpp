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
}

TEST_F(PrivateFileTest, AWriteReplacesTheWholeFileForTheUserAloneOrLeavesNothingBehind) {
  const auto path = folder_ + "/file";
  EXPECT_FALSE(writePrivateFile(path, contents_));
  ASSERT_TRUE(makePrivateFolder(folder_));
  std::ofstream(path) << "something longer than what comes";
  fs::permissions(path, fs::perms(0644));
  EXPECT_TRUE(writePrivateFile(path, contents_));
  std::ifstream file(path, std::ios::binary);
  EXPECT_EQ(Bytes(std::istreambuf_iterator<char>(file), {}), contents_);
  EXPECT_EQ(permissions(path), 0600u);
  EXPECT_FALSE(makePrivateFolder(path));

  ASSERT_TRUE(makePrivateFolder(folder_ + "/folder/full"));
  EXPECT_FALSE(writePrivateFile(folder_ + "/folder", contents_));
  const fs::directory_iterator entries(folder_);
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 2);
}

}  // namespace
}  // namespace zephyx
