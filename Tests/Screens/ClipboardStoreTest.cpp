#include "Screens/ClipboardStore.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>

#include "Tests/Screens/StoreWriter.h"

namespace zephyx {
namespace {

namespace fs = std::filesystem;

class ClipboardStoreTest : public testing::Test {
 protected:
  ClipboardEntry insert(const Map& message, std::int64_t limit = 100) {
    const auto inserted = store().insert(*CapturedEntry::fromMessage(message), limit);
    EXPECT_TRUE(inserted);
    return inserted ? inserted->entry : ClipboardEntry{};
  }
  std::int64_t insertText(const std::string& text, std::int64_t limit = 100) {
    return insert({{"type", "text"}, {"text", text}}, limit).id;
  }
  std::vector<std::string> previews(const ClipboardQuery& query = {}) {
    std::vector<std::string> found;
    for (const auto& entry : store().page(query, ClipboardStore::newest, 1000))
      found.push_back(entry.preview);
    return found;
  }
  ClipboardStore& store() {
    if (!store_) store_.emplace(folder());
    return *store_;
  }
  void close() { store_.reset(); }

  std::string folder() const { return directory_.path().toStdString() + "/app"; }
  std::string database() const { return folder() + "/clipboard_history.sqlite"; }
  std::string makeFile(const std::string& path, const std::string& contents = "x") {
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << contents;
    return path;
  }
  /// The contents of the store's files that were renamed to names with this suffix.
  std::vector<std::string> setAside(const std::string& suffix) {
    std::vector<std::string> found;
    for (const auto& file : fs::directory_iterator(folder())) {
      const auto name = file.path().filename().string();
      if (!name.starts_with("clipboard_history.sqlite" + suffix) || name.ends_with("-wal"))
        continue;
      std::ifstream stream(file.path(), std::ios::binary);
      found.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    return found;
  }

 private:
  QTemporaryDir directory_;
  std::optional<ClipboardStore> store_;
};

TEST_F(ClipboardStoreTest, KeepsOrderAndEveryFieldAcrossARestart) {
  std::string longText = "é";
  longText += '\0';
  while (longText.size() < 300'000) longText += longText;
  const auto first = insertText(longText);
  insert({{"type", "image"},
          {"imageBlobPath", "/b"},
          {"thumbnailPath", "/t"},
          {"byteSize", std::int64_t{1} << 40},
          {"width", 3},
          {"height", 4},
          {"sourceAppName", "Paint"},
          {"sourceAppBundleId", "paint"},
          {"sourceAppIconPath", "/i"},
          {"copiedAtEpochMs", std::int64_t{1'700'000'000'000}}});
  close();

  const auto entries = store().page({}, ClipboardStore::newest, 10);
  ASSERT_EQ(entries.size(), 2U);
  const auto& image = entries[0];
  EXPECT_EQ(image.kind, "image");
  EXPECT_EQ(image.preview, "");
  EXPECT_EQ(image.imageBlobPath, "/b");
  EXPECT_EQ(image.thumbnailPath, "/t");
  EXPECT_EQ(image.filePath, std::nullopt);
  EXPECT_EQ(image.byteSize, std::int64_t{1} << 40);
  EXPECT_EQ(image.width, 3);
  EXPECT_EQ(image.height, 4);
  EXPECT_EQ(image.sourceAppName, "Paint");
  EXPECT_EQ(image.sourceAppBundleId, "paint");
  EXPECT_EQ(image.sourceAppIconPath, "/i");
  EXPECT_EQ(image.copiedAtEpochMs, 1'700'000'000'000);
  EXPECT_EQ(entries[1].id, first);
  EXPECT_FALSE(entries[1].isWhole());
  EXPECT_EQ(store().text(first), longText);
  EXPECT_EQ(store().beginningOfText(first, 100'000)->size(), 99'999U)  // between two characters
      << "three bytes repeat; the hundred-thousandth is the first of a character";
  EXPECT_EQ(store().text(first + 100), std::nullopt);
}

TEST_F(ClipboardStoreTest, DropsTheOldestBeyondTheLimitButNoPinnedOnes) {
  const auto pinned = insertText("pinned");
  ASSERT_TRUE(store().setPinned(pinned, true));
  const auto oldest = insertText(std::string(200'000, 'o'));
  for (const auto* text : {"a", "b"}) insertText(text);
  const auto inserted =
      store().insert(*CapturedEntry::fromMessage(Map{{"type", "text"}, {"text", "c"}}), 3);
  ASSERT_TRUE(inserted);
  EXPECT_EQ(inserted->dropped, std::vector{oldest});
  EXPECT_EQ(previews(), (std::vector<std::string>{"c", "b", "a", "pinned"}));
  EXPECT_EQ(store().text(oldest), std::nullopt);

  ASSERT_TRUE(store().clear());
  EXPECT_EQ(previews(), std::vector<std::string>{"pinned"});
  ASSERT_TRUE(store().remove(pinned));
  EXPECT_TRUE(previews().empty());
}

TEST_F(ClipboardStoreTest, RemovesImagesOnlyFromTheFoldersThatAreTheHosts) {
  const std::string blob = makeFile(folder() + "/clipboard_blobs/A.png");
  const std::string thumbnail = makeFile(folder() + "/clipboard_thumbs/A_thumb.png");
  const std::vector<std::string> foreign = {
      makeFile(folder() + "/other/B.png"),
      makeFile(folder() + "/clipboard_blobs/deeper/C.png"),
      makeFile(folder() + "/D.png"),
  };
  const std::string sneaky = folder() + "/clipboard_blobs/../D.png";
  fs::create_directory_symlink(folder() + "/other", folder() + "/clipboard_blobs/link");
  const std::string linked = folder() + "/clipboard_blobs/link/B.png";

  for (const auto& path : {foreign[0], foreign[1], foreign[2], sneaky, linked, blob})
    insert({{"type", "image"}, {"imageBlobPath", path}, {"thumbnailPath", thumbnail}});
  insert({{"type", "file"}, {"filePath", foreign[0]}, {"thumbnailPath", foreign[0]}});
  ASSERT_TRUE(store().clear());

  EXPECT_FALSE(fs::exists(blob));
  EXPECT_FALSE(fs::exists(thumbnail));
  for (const auto& path : foreign) EXPECT_TRUE(fs::exists(path)) << path;
}

TEST_F(ClipboardStoreTest, SweepsOldImagesThatNoEntryNames) {
  const auto old = fs::file_time_type::clock::now() - std::chrono::hours(2);
  const std::string named = makeFile(folder() + "/clipboard_blobs/named.png");
  const std::string orphan = makeFile(folder() + "/clipboard_blobs/orphan.png");
  const std::string young = makeFile(folder() + "/clipboard_blobs/young.png");
  for (const auto& path : {named, orphan}) fs::last_write_time(path, old);
  insert({{"type", "image"}, {"imageBlobPath", named}});

  const std::string aside = makeFile(database() + ".damaged-1");
  store().sweepImages();
  EXPECT_TRUE(fs::exists(orphan)) << "a store that was set aside may name it";
  fs::remove(aside);
  store().sweepImages();
  EXPECT_FALSE(fs::exists(orphan));
  EXPECT_TRUE(fs::exists(named));
  EXPECT_TRUE(fs::exists(young));
}

TEST_F(ClipboardStoreTest, FindsInAnyCaseWhatTheRowStandsFor) {
  insert({{"type", "url"}, {"text", "https://Example.org"}, {"sourceAppName", "Browser"}});
  insert({{"type", "file"}, {"text", "tax.pdf"}, {"filePath", "/home/Änne/tax.pdf"}});
  const auto pinned = insertText("ÄPFEL und Birnen 100%");
  insertText(std::string(50'000, '.') + "Needle");
  ASSERT_TRUE(store().setPinned(pinned, true));

  const std::pair<ClipboardQuery, std::size_t> cases[] = {
      {{.text = "EXAMPLE"}, 1},
      {{.text = "browser"}, 1},
      {{.text = "änne"}, 1},
      {{.text = "äpfel UND"}, 1},
      {{.text = "needle"}, 1},
      {{.text = "%"}, 1},
      {{.text = "'; DROP"}, 0},
      {{.text = "a", .kind = "file"}, 1},
      {{.kind = "text"}, 2},
      {{.pinnedOnly = true}, 1},
      {{.text = "b", .kind = "text", .pinnedOnly = true}, 1},
  };
  for (const auto& [query, found] : cases)
    EXPECT_EQ(previews(query).size(), found) << query.text << " " << query.kind;
}

TEST_F(ClipboardStoreTest, IsReadableByItsUserAlone) {
  insertText("secret");
  const auto mode = [](const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 0777U;
  };
  EXPECT_EQ(mode(folder()), 0700U);
  EXPECT_EQ(mode(database()), 0600U);
  EXPECT_EQ(mode(database() + "-wal"), 0600U);
}

TEST_F(ClipboardStoreTest, SetsAsideWhatItCannotUseAndBeginsAnew) {
  const std::string garbage(5000, 'g');
  makeFile(database(), garbage);
  EXPECT_EQ(store().condition(), StoreCondition::replacedDamaged);
  EXPECT_EQ(setAside(".damaged-"), std::vector{garbage});
  insertText("after");
  close();
  EXPECT_EQ(store().condition(), StoreCondition::opened);
  EXPECT_EQ(previews(), std::vector<std::string>{"after"});
  close();

  ASSERT_TRUE(Sqlite::open(database())->execute("PRAGMA user_version=99"));
  EXPECT_EQ(store().condition(), StoreCondition::replacedNewer);
  EXPECT_EQ(setAside(".newer-").size(), 1U);
  EXPECT_TRUE(previews().empty());
}

TEST_F(ClipboardStoreTest, SurvivesDamageThatShowsItselfLater) {
  using Damage = std::function<void(const std::string&)>;
  const Damage fill = [](const std::string& path) {
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(4096);
    file << std::string(40'000, '\xAB');
  };
  const Damage cut = [](const std::string& path) { fs::resize_file(path, 20'000); };
  std::size_t damaged = 0;
  for (const auto& damage : {fill, cut}) {
    for (int i = 0; i < 200; ++i) insertText(std::string(5000, 'x'));
    close();
    fs::remove(database() + "-wal");
    damage(database());

    previews();
    insertText("new");
    EXPECT_EQ(previews(), std::vector<std::string>{"new"});
    EXPECT_EQ(store().condition(), StoreCondition::replacedDamaged);
    EXPECT_EQ(setAside(".damaged-").size(), ++damaged);
  }
}

TEST_F(ClipboardStoreTest, WhatAnotherProgramKeepsToItselfIsLeftAloneAndThereTheNextTime) {
  insertText("kept");
  close();
  auto other = Sqlite::open(database());
  ASSERT_TRUE(other->execute("PRAGMA locking_mode=EXCLUSIVE; UPDATE entry SET pinned = 0"));
  EXPECT_EQ(store().condition(), StoreCondition::notKept);
  insertText("not kept");
  close();
  other.reset();
  EXPECT_EQ(store().condition(), StoreCondition::opened);
  EXPECT_EQ(previews(), std::vector<std::string>{"kept"});
}

TEST_F(ClipboardStoreTest, LivesInMemoryWhereNothingCanBeWritten) {
  makeFile(folder(), "a file where the folder should be");
  EXPECT_EQ(store().condition(), StoreCondition::notKept);
  insertText("still listed");
  EXPECT_EQ(previews(), std::vector<std::string>{"still listed"});
}

TEST_F(ClipboardStoreTest, LosesNothingThatWasAcknowledgedWhenTheProcessIsKilled) {
  for (int round = 0; round < 3; ++round) {
    QProcess writer;
    writer.start(QCoreApplication::applicationFilePath(),
                 {storeWriterArgument, QString::fromStdString(folder())});
    QByteArray acknowledged;
    while (acknowledged.count('\n') < 40) {
      ASSERT_TRUE(writer.waitForReadyRead(10'000));
      acknowledged += writer.readAllStandardOutput();
    }
    writer.kill();
    writer.waitForFinished();
    acknowledged += writer.readAllStandardOutput();
    for (const QByteArray& line : acknowledged.split('\n')) {
      if (!acknowledged.contains(line + '\n') || line.isEmpty()) continue;  // cut off by the kill
      const auto text = store().text(line.toLongLong());
      ASSERT_TRUE(text) << line.toStdString();
      EXPECT_EQ(*text, storeWriterText(line.toLongLong()));
    }
    close();
  }
}

}  // namespace
}  // namespace zephyx
