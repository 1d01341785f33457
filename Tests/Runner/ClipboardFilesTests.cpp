#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "Tests/Runner/CaptureTest.h"

namespace zephyx {
namespace {

namespace fs = std::filesystem;

constexpr const char* uuid = "[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}";

/// What a capture leaves on disk.
class ClipboardFilesTest : public CaptureTest {
 protected:
  std::string makeFile(const std::string& name, const Bytes& contents) {
    const auto path = desktop.directories.home() + "/" + name;
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(contents.data()),
               static_cast<std::streamsize>(contents.size()));
    return path;
  }

  /// Puts a file where a folder is wanted.
  void blockFolder(const std::string& path) {
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path) << "in the way";
  }

  static unsigned permissions(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 0777u;
  }

  Bytes contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return Bytes(std::istreambuf_iterator<char>(file), {});
  }

  std::optional<Map> capturedPicture(PixelSize pixels, int dotsPerInch = 72,
                                     const std::string& format = "SIMPNG") {
    const auto data = SimulatedImages::encoded(pixels, dotsPerInch, format);
    return captured({{format == "SIMTIFF" ? "public.tiff" : "public.png",
                      std::string(data.begin(), data.end())}});
  }

  void useIcon(const std::string& bundleIdentifier) {
    const auto icon = desktop.images.decode(SimulatedImages::encoded({64, 64}));
    editor = desktop.workspace.start({bundleIdentifier, "Editor", icon});
  }
};

TEST_F(ClipboardFilesTest, APictureIsStoredAsPngWithAThumbnailUnderOneIdentifierForTheUserAlone) {
  launchBehindEditor();
  const auto entry = capturedPicture({4000, 1000}, 72, "SIMTIFF");
  ASSERT_TRUE(entry);
  const auto blob = text(*entry, "imageBlobPath");
  const auto thumbnail = text(*entry, "thumbnailPath");
  EXPECT_THAT(blob, MatchesRegex(support() + "/clipboard_blobs/" + uuid + "[.]png"));
  EXPECT_EQ(thumbnail,
            support() + "/clipboard_thumbs/" + fs::path(blob).stem().string() + "_thumb.png");
  EXPECT_EQ(contentsOf(blob), SimulatedImages::encoded({4000, 1000}));
  EXPECT_EQ(contentsOf(thumbnail), SimulatedImages::encoded({240, 60}));
  EXPECT_EQ(integer(*entry, "byteSize"), static_cast<std::int64_t>(contentsOf(blob).size()));
  EXPECT_EQ(integer(*entry, "width"), 4000);
  EXPECT_EQ(integer(*entry, "height"), 1000);
  for (const auto& path : {blob, thumbnail}) {
    EXPECT_EQ(permissions(path), 0600u);
    EXPECT_EQ(permissions(fs::path(path).parent_path()), 0700u);
  }
  const auto again = capturedPicture({4000, 1000});
  ASSERT_TRUE(again);
  EXPECT_NE(text(*again, "imageBlobPath"), blob);
  const auto blobs = fs::directory_iterator(support() + "/clipboard_blobs");
  EXPECT_EQ(std::distance(begin(blobs), end(blobs)), 2);  // and no temporary files
}

TEST_F(ClipboardFilesTest, ThumbnailsCountInPointsAndNeverGrow) {
  const std::tuple<PixelSize, int, double, PixelSize> cases[] = {
      {{100, 50}, 72, 1, {100, 50}},    {{240, 240}, 72, 1, {240, 240}},
      {{1000, 4000}, 72, 1, {60, 240}}, {{480, 240}, 144, 1, {480, 240}},
      {{960, 480}, 144, 1, {240, 120}}, {{4000, 1000}, 72, 2, {480, 120}},
      {{0, 0}, 72, 1, {0, 0}},
  };
  launchBehindEditor();
  for (const auto& [pixels, dotsPerInch, backingScale, expected] : cases) {
    SCOPED_TRACE(std::to_string(pixels.wide) + "x" + std::to_string(pixels.high));
    desktop.images.setBackingScale(backingScale);
    const auto entry = capturedPicture(pixels, dotsPerInch);
    ASSERT_TRUE(entry);
    EXPECT_EQ(integer(*entry, "width"), pixels.wide);
    const auto thumbnail = desktop.images.decodeFile(text(*entry, "thumbnailPath"));
    ASSERT_TRUE(thumbnail);
    EXPECT_EQ(thumbnail->pixelSize(), expected);
  }
}

TEST_F(ClipboardFilesTest, WhatCannotBeWrittenIsLeftOutOfTheEntry) {
  blockFolder(support() + "/clipboard_blobs");
  useIcon("org.example.editor");
  blockFolder(support() + "/clipboard_icons");
  launchBehindEditor();
  auto entry = capturedPicture({400, 100});
  ASSERT_TRUE(entry);
  EXPECT_EQ(text(*entry, "imageBlobPath"), "(absent)");
  EXPECT_EQ(text(*entry, "sourceAppIconPath"), "(absent)");
  EXPECT_NE(text(*entry, "thumbnailPath"), "(absent)");
  EXPECT_EQ(integer(*entry, "width"), 400);

  entry = capturedPicture({400, 100}, 72, "SIMRAW");  // can be read but not encoded
  ASSERT_TRUE(entry);
  EXPECT_EQ(text(*entry, "type"), "image");
  EXPECT_EQ(text(*entry, "imageBlobPath"), "(absent)");
  EXPECT_EQ(text(*entry, "thumbnailPath"), "(absent)");
}

TEST_F(ClipboardFilesTest, FilesAreDescribed) {
  launchBehindEditor();
  const auto note = makeFile("notes & co/mañana %.txt", bytesOf("twelve bytes"));
  auto entry = captured({{"public.file-url", "file://" + desktop.directories.home() +
                                                 "/notes%20&%20co/ma%C3%B1ana%20%25.txt"}});
  ASSERT_TRUE(entry);
  EXPECT_EQ(text(*entry, "type"), "file");
  EXPECT_EQ(text(*entry, "text"), "mañana %.txt");
  EXPECT_EQ(text(*entry, "filePath"), note);
  EXPECT_EQ(integer(*entry, "byteSize"), 12);
  EXPECT_FALSE(entry->find("width") || entry->find("thumbnailPath"));

  const auto data = SimulatedImages::encoded({960, 480});
  const auto picture = makeFile("picture.png", data);
  entry = captured({{"public.file-url", "file://" + picture}});
  ASSERT_TRUE(entry);
  EXPECT_EQ(integer(*entry, "byteSize"), static_cast<std::int64_t>(data.size()));
  EXPECT_EQ(integer(*entry, "width"), 960);
  EXPECT_EQ(integer(*entry, "height"), 480);
  EXPECT_EQ(contentsOf(text(*entry, "thumbnailPath")), SimulatedImages::encoded({240, 120}));
  EXPECT_THAT(fs::path(text(*entry, "thumbnailPath")).filename().string(),
              MatchesRegex(std::string(uuid) + "_thumb[.]png"));
  EXPECT_FALSE(entry->find("imageBlobPath"));

  entry = captured({{"public.file-url", "file://" + desktop.directories.home() + "/gone.png"}});
  ASSERT_TRUE(entry);
  EXPECT_EQ(text(*entry, "text"), "gone.png");
  EXPECT_FALSE(entry->find("byteSize"));

  entry =
      captured({{"public.file-url", "file://" + desktop.directories.home() + "/notes%20&%20co/"}});
  ASSERT_TRUE(entry);
  EXPECT_EQ(text(*entry, "text"), "notes & co");
}

TEST_F(ClipboardFilesTest, AnIconIsKeptOncePerApplication) {
  useIcon("org.example.editor");
  launchBehindEditor();
  auto entry = captured({{"public.utf8-plain-text", "x"}});
  ASSERT_TRUE(entry);
  const auto path = text(*entry, "sourceAppIconPath");
  EXPECT_EQ(path, support() + "/clipboard_icons/org.example.editor.png");
  EXPECT_EQ(contentsOf(path), SimulatedImages::encoded({64, 64}));
  EXPECT_EQ(permissions(path), 0600u);

  std::ofstream(path) << "kept";
  entry = captured({{"public.utf8-plain-text", "x"}});
  EXPECT_EQ(contentsOf(path), bytesOf("kept"));
  EXPECT_EQ(text(*entry, "sourceAppIconPath"), path);

  for (const char* identifier : {"", "../../escape", "a/b", ".hidden"}) {
    useIcon(identifier);
    switchToEditor();
    entry = captured({{"public.utf8-plain-text", "x"}});
    ASSERT_TRUE(entry);
    EXPECT_EQ(text(*entry, "sourceAppIconPath"), "(absent)") << identifier;
  }
  EXPECT_FALSE(fs::exists(support() + "/../escape.png"));
}

}  // namespace
}  // namespace zephyx
