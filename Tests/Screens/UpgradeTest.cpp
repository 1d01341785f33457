#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>
#include <fstream>
#include <sstream>

#include "Screens/ClipboardStore.h"
#include "Screens/NotesStore.h"
#include "Screens/Sqlite.h"

namespace zephyx {
namespace {

/// Stores as each version has written them.
class UpgradeTest : public testing::TestWithParam<const char*> {
 protected:
  void make(const std::string& store) {
    std::ostringstream sql;
    sql << std::ifstream(std::string(ZEPHYX_TEST_DATA "/homes/") + GetParam() + '/' + store +
                         ".sql")
               .rdbuf();
    auto database = Sqlite::open(folder() + '/' + store + ".sqlite");
    ASSERT_TRUE(database && database->execute(sql.str().c_str()));
  }
  std::string folder() const { return directory_.path().toStdString(); }

 private:
  QTemporaryDir directory_;
};

TEST_P(UpgradeTest, TheHistoryIsReadWholeAndGoesOn) {
  make("clipboard_history");
  {
    ClipboardStore store(folder());
    ASSERT_EQ(store.condition(), StoreCondition::opened);
    const auto entries = store.page({}, ClipboardStore::newest, 10);
    ASSERT_EQ(entries.size(), 4U);
    EXPECT_EQ(entries[0].preview, "newest of the old");
    EXPECT_EQ(entries[0].sourceAppBundleId, "browser");
    EXPECT_EQ(store.text(entries[1].id), "a long text that begins here, and ends there");
    EXPECT_EQ(entries[2].filePath, "/home/anna/report.pdf");
    EXPECT_EQ(entries[2].byteSize, 348'211);
    EXPECT_TRUE(entries[3].pinned);
    EXPECT_EQ(entries[3].copiedAtEpochMs, 1'700'000'000'000);
    const auto captured = CapturedEntry::fromMessage(Map{{"type", "text"}, {"text", "new"}});
    EXPECT_EQ(store.insert(*captured, 250)->entry.id, 10);
    EXPECT_TRUE(store.setPinned(3, false));
  }
  if (GetParam() != std::string("newer")) return;
  auto database = Sqlite::open(folder() + "/clipboard_history.sqlite");
  auto row = database->prepare("SELECT color, (SELECT name FROM tag) FROM entry WHERE id = 3");
  ASSERT_TRUE(row.step());
  EXPECT_EQ(row.text(0) + row.text(1), "redwork") << "what only the later version knows";
}

TEST_P(UpgradeTest, TheNotesAreReadWholeAndGoOn) {
  make("notes");
  NotesStore store(folder());
  ASSERT_EQ(store.condition(), StoreCondition::opened);
  EXPECT_EQ(store.text(4), "Shopping\nmilk");
  EXPECT_EQ(store.add("new", 1), 5);
}

INSTANTIATE_TEST_SUITE_P(Homes, UpgradeTest, testing::Values("first", "present", "newer"));

}  // namespace
}  // namespace zephyx
