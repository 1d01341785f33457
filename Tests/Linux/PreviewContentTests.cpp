#include <gtest/gtest.h>

#include <QtCore/QUrl>
#include <fstream>

#include "Platform/Linux/Preview/PreviewContent.h"
#include "Tests/Desktop/TemporaryDirectory.h"

namespace zephyx {
namespace {

constexpr QSize limit(400, 300);

class PreviewContentTest : public testing::Test {
 protected:
  PreviewContent preview(const std::string& name) const {
    return PreviewContent::ofFile(
        QUrl::fromLocalFile(QString::fromStdString(path(name))).toEncoded().toStdString(), limit);
  }
  std::string path(const std::string& name) const { return (folder_.path() / name).string(); }
  void write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
  }

 private:
  TemporaryDirectory folder_;
};

TEST_F(PreviewContentTest, PicturesAreScaledDownToTheLimitAndNeverUp) {
  const std::pair<QSize, QSize> cases[] = {
      {{800, 300}, {400, 150}}, {{60, 40}, {60, 40}}, {{10, 6000}, {1, 300}}};
  for (const auto& [size, shown] : cases) {
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(QString::fromStdString(path("a picture.png"))));
    EXPECT_EQ(preview("a picture.png").image.size(), shown);
  }
}

TEST_F(PreviewContentTest, TextIsShownUpToItsLimitWithoutACutCharacter) {
  std::string text(256 * 1024 - 1, 'x');
  write("long.txt", text + "é and more");
  const auto content = preview("long.txt");
  EXPECT_TRUE(content.isText);
  EXPECT_EQ(content.text.toStdString(), text);
}

TEST_F(PreviewContentTest, WhatIsNeitherPictureNorTextIsDescribed) {
  write("binary", std::string("a\0b", 3));
  write("latin1", "caf\xe9 au lait");
  std::filesystem::create_directory(path("folder"));
  for (const std::string name : {"binary", "latin1", "folder", "missing"}) {
    SCOPED_TRACE(name);
    const auto content = preview(name);
    EXPECT_TRUE(content.image.isNull());
    EXPECT_FALSE(content.isText);
    EXPECT_EQ(content.isFolder, name == "folder");
    EXPECT_EQ(content.name.toStdString(), name);
    EXPECT_FALSE(content.details.isEmpty());
  }
}

}  // namespace
}  // namespace zephyx
