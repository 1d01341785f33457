
#include "Platform/Pasteboard.h"
#include "Tests/Runner/CaptureTest.h"

namespace zephyx {
namespace {

constexpr const char* fileUrlType = "public.file-url";
constexpr const char* urlType = "public.url";
constexpr const char* textType = "public.utf8-plain-text";
constexpr const char* pngType = "public.png";
constexpr const char* tiffType = "public.tiff";
constexpr const char* concealed = "org.nspasteboard.ConcealedType";
constexpr const char* transient = "org.nspasteboard.TransientType";
constexpr const char* remote = "com.apple.is-remote-clipboard";

/// Runs on a system that announces changes and on one that does not.
class ClipboardMonitorTest : public CaptureTest, public testing::WithParamInterface<bool> {
 protected:
  ClipboardMonitorTest() { desktop.pasteboard.setAnnouncesChanges(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(, ClipboardMonitorTest, testing::Bool(),
                         [](const auto& run) { return run.param ? "Announcing" : "Polled"; });

TEST_P(ClipboardMonitorTest, ClassifiesCopies) {
  struct Case {
    const char* name;
    Items items;
    const char* type;  ///< null for no entry
    const char* text = "";
  };
  const std::vector<Case> cases = {
      {"text", {{textType, "héllo"}}, "text", "héllo"},
      {"http", {{textType, "http://a.org"}}, "url", "http://a.org"},
      {"https", {{textType, "https://a.org and more"}}, "url", "https://a.org and more"},
      {"ftp", {{textType, "ftp://a.org"}}, "url", "ftp://a.org"},
      {"capital scheme", {{textType, "HTTPS://a.org"}}, "text", "HTTPS://a.org"},
      {"bare host", {{textType, "www.example.org"}}, "text", "www.example.org"},
      {"other scheme", {{textType, "mailto:a@b.org"}}, "text", "mailto:a@b.org"},
      {"url before title",
       {{textType, "Title"}, {urlType, "https://b.org"}},
       "url",
       "https://b.org"},
      {"empty url", {{urlType, ""}, {textType, "Title"}}, nullptr},
      {"empty text", {{textType, ""}}, nullptr},
      {"no known type", {{"org.example.private", "x"}}, nullptr},
      {"nothing", {}, nullptr},
      {"concealed", {{textType, "password"}, {concealed, ""}}, nullptr},
      {"transient", {{transient, ""}, {textType, "passing"}}, nullptr},
      {"a file that is no url", {{fileUrlType, "not a url"}, {textType, "t"}}, "text", "t"},
      {"an undecodable picture", {{pngType, "noise"}, {textType, "t"}}, "text", "t"},
      {"only the first picture type", {{pngType, "noise"}, {tiffType, "SIMTIFF 2 2 72"}}, nullptr},
      {"file before picture and text",
       {{textType, "t"}, {pngType, "SIMPNG 2 2 72"}, {fileUrlType, "file:///no/such%20file.txt"}},
       "file",
       "such file.txt"},
      {"picture before text", {{textType, "t"}, {tiffType, "SIMTIFF 2 2 72"}}, "image", "(absent)"},
  };
  launchBehindEditor();
  for (const auto& [name, items, type, expectedText] : cases) {
    SCOPED_TRACE(name);
    const auto entry = captured(items);
    ASSERT_EQ(entry.has_value(), type != nullptr);
    if (!entry) continue;
    EXPECT_EQ(text(*entry, "type"), type);
    EXPECT_EQ(text(*entry, "text"), expectedText);
  }
}

TEST_P(ClipboardMonitorTest, ARefusedUrlFallsBackToTheText) {
  launchBehindEditor();
  SimulatedPasteboardOwner owner;
  owner.items = {{urlType, bytesOf("https://a.org")}, {textType, bytesOf("plain")}};
  owner.refused = {urlType};
  desktop.pasteboard.otherProgramCopies(owner);
  EXPECT_THAT(texts(entriesAfter(0.4)), ElementsAre("plain"));
}

TEST_P(ClipboardMonitorTest, NamesTheSourceAndTheTimeAndNothingElse) {
  desktop.dispatch.setWallClock(1'700'000'000.9996);
  launchBehindEditor();
  const double before = desktop.dispatch.wallClock();
  const auto entry = captured({{textType, "x"}});
  ASSERT_TRUE(entry);
  EXPECT_EQ(text(*entry, "sourceAppName"), "Editor");
  EXPECT_EQ(text(*entry, "sourceAppBundleId"), "org.example.editor");
  EXPECT_EQ(entry->size(), 5u);  // with type, text and time
  const auto time = integer(*entry, "copiedAtEpochMs");
  EXPECT_GE(time, static_cast<std::int64_t>(before * 1000));
  EXPECT_LE(time, static_cast<std::int64_t>((before + 0.4) * 1000));

  const auto far = captured({{textType, "x"}, {remote, ""}});
  ASSERT_TRUE(far);
  EXPECT_EQ(text(*far, "sourceAppName"), "Universal Clipboard");
  EXPECT_EQ(text(*far, "sourceAppBundleId"), "com.apple.universalclipboard");

  desktop.workspace.bringToFront(nullptr);
  const auto nobody = captured({{textType, "x"}});
  ASSERT_TRUE(nobody);
  EXPECT_EQ(nobody->size(), 3u);
}

TEST_P(ClipboardMonitorTest, RecordsEveryCopyFromItsStartOn) {
  copy({{textType, "before the start"}});
  desktop.dispatch.settle();
  launchBehindEditor();
  EXPECT_THAT(entriesAfter(1), IsEmpty());
  copy({{textType, "same"}});
  EXPECT_THAT(texts(entriesAfter(0.4)), ElementsAre("same"));
  copy({{textType, "same"}});
  EXPECT_THAT(texts(entriesAfter(0.4)), ElementsAre("same"));
  EXPECT_THAT(entriesAfter(2), IsEmpty());
}

TEST_P(ClipboardMonitorTest, OwnWritesAreSkippedOnceAndTheNextForeignCopyIsNot) {
  launchBehindEditor();
  panelScreen().call("clipboardSetPasteboard", Map{{"text", "ours"}});
  EXPECT_THAT(entriesAfter(1), IsEmpty());
  copy({{textType, "theirs"}});
  EXPECT_THAT(texts(entriesAfter(0.4)), ElementsAre("theirs"));
  desktop.pasteboard.clearContents();  // a write that nobody marked
  desktop.pasteboard.writeString("unmarked");
  EXPECT_THAT(texts(entriesAfter(0.4)), ElementsAre("unmarked"));
}

TEST_P(ClipboardMonitorTest, AnIgnoredCountStaysUntilItIsMet) {
  launchBehindEditor();
  const auto now = desktop.pasteboard.changeCount();
  monitor().ignoreNextChangeCount = now + 2;
  copy({{textType, "one"}});
  EXPECT_THAT(texts(entriesAfter(0.4)), ElementsAre("one"));
  copy({{textType, "two"}});
  EXPECT_THAT(entriesAfter(0.4), IsEmpty());
  EXPECT_EQ(monitor().ignoreNextChangeCount, std::nullopt);
  copy({{textType, "three"}});
  EXPECT_THAT(texts(entriesAfter(0.4)), ElementsAre("three"));
}

TEST_P(ClipboardMonitorTest, SuspendedItSeesNothingAndAfterwardsTheLatest) {
  launchBehindEditor();
  monitor().isSuspended = true;
  copy({{textType, "unseen"}});
  EXPECT_THAT(entriesAfter(1), IsEmpty());
  copy({{textType, "latest"}});
  desktop.dispatch.settle();
  monitor().isSuspended = false;
  EXPECT_THAT(texts(entriesAfter(0.4)), ElementsAre("latest"));
}

TEST_P(ClipboardMonitorTest, ASlowOwnerHoldsUpNobodyAndTheEventsKeepTheirOrder) {
  launchBehindEditor();
  copy({{textType, "slow"}}, 0.6);
  desktop.dispatch.mainQueue().asyncAfter(0.5, [this] {  // the owner is still being asked
    pressHotkey(HotkeyID::togglePopover);
    EXPECT_TRUE(mainWindow().isVisible());
    copy({{textType, "fast"}});
  });
  const auto entries = entriesAfter(3);
  // Where changes are not announced, an owner that is replaced while it is being asked is lost.
  EXPECT_EQ(texts(entries).back(), "fast");
  if (GetParam()) {
    EXPECT_THAT(texts(entries), ElementsAre("slow", "fast"));
  }
  copy({{textType, "never"}}, 1000);
  EXPECT_THAT(entriesAfter(5), IsEmpty());
}

TEST_P(ClipboardMonitorTest, TheTimerIsThereWhateverTheSystemAnnounces) {
  launchBehindEditor();
  desktop.dispatch.advance(0.05);
  copy({{textType, "x"}});
  EXPECT_THAT(entriesAfter(0).size(), GetParam() ? 1u : 0u);
  EXPECT_THAT(entriesAfter(0.4).size(), GetParam() ? 0u : 1u);
}

TEST_P(ClipboardMonitorTest, AnEngineThatIsGoneOrTheEndDuringACaptureIsHarmless) {
  launchBehindEditor();
  desktop.engines.engine("clipboard_engine")->crash();
  copy({{textType, "x"}});
  EXPECT_THAT(entriesAfter(1), IsEmpty());
  monitor().methodChannel.reset();
  copy({{textType, "slow"}}, 1);
  desktop.dispatch.mainQueue().asyncAfter(0.9, [this] { endHost(); });
  desktop.dispatch.advance(3);
}

TEST_P(ClipboardMonitorTest, ACaptureThatEndsLaterThanTheNextStillComesFirst) {
  if (!GetParam()) return;  // each copy keeps its own contents only where changes are announced
  launchBehindEditor();
  // No file after all, so the slow owner is asked once more for the text.
  copy({{fileUrlType, "not a url"}, {textType, "slow"}}, 0.5);
  desktop.dispatch.mainQueue().asyncAfter(0.6, [this] { copy({{textType, "fast"}}); });
  desktop.dispatch.mainQueue().asyncAfter(
      0.9, [this] { EXPECT_THAT(panelScreen().calls(), IsEmpty()); });
  EXPECT_THAT(texts(entriesAfter(2)), ElementsAre("slow", "fast"));
}

}  // namespace
}  // namespace zephyx
