#include <fstream>

#include "Tests/Runner/OpenPanelTest.h"

namespace zephyx {
namespace {

const MethodReply pasted = Value("pasted");

/// What the panel puts on the pasteboard, previews and pastes.
class ClipboardPanelPasteTest : public OpenPanelTest {
 protected:
  std::string writeBlob() {
    const auto path = desktop.directories.home() + "/blob.png";
    std::ofstream(path, std::ios::binary) << "SIMPNG 30 20 72\n";
    return path;
  }
};

TEST_F(ClipboardPanelPasteTest, PutsEntriesBackOnThePasteboard) {
  const auto blob = writeBlob();
  const auto picture = SimulatedImages::encoded({30, 20});
  const auto noise = desktop.directories.home() + "/noise.png";
  std::ofstream(noise) << "noise";

  using Items = std::vector<std::pair<std::string, std::string>>;
  const char* const fileUrl = "public.file-url";
  const char* const url = "public.url";
  const char* const text = "public.utf8-plain-text";
  const std::tuple<const char*, Map, Items> cases[] = {
      {"text", Map{{"type", "text"}, {"text", "héllo"}}, {{text, "héllo"}}},
      {"no type", Map{{"text", "plain"}}, {{text, "plain"}}},
      {"type of another kind", Map{{"type", 3}, {"text", "plain"}}, {{text, "plain"}}},
      {"unknown type", Map{{"type", "colour"}, {"text", "red"}}, {{text, "red"}}},
      {"empty text", Map{{"text", ""}}, {{text, ""}}},
      {"no text", Map{{"type", "text"}}, {}},
      {"url",
       Map{{"type", "url"}, {"text", "https://a.org"}},
       {{text, "https://a.org"}, {url, "https://a.org"}}},
      {"url as plain text",
       Map{{"type", "url"}, {"text", "https://a.org"}, {"plainText", true}},
       {{text, "https://a.org"}}},
      {"url that does not parse",
       Map{{"type", "url"}, {"text", "https://a b"}},
       {{text, "https://a b"}}},
      {"file",
       Map{{"type", "file"}, {"text", "b.txt"}, {"filePath", "/tmp/a ñ#%?/b.txt"}},
       {{fileUrl, "file:///tmp/a%20%C3%B1%23%25%3F/b.txt"}}},
      {"file without a path", Map{{"type", "file"}, {"text", "b.txt"}}, {{text, "b.txt"}}},
      {"image",
       Map{{"type", "image"}, {"imageBlobPath", blob}},
       {{"public.png", std::string(picture.begin(), picture.end())}}},
      {"image that is no image",
       Map{{"type", "image"}, {"text", "t"}, {"imageBlobPath", noise}},
       {{text, "t"}}},
      {"image that is gone", Map{{"type", "image"}, {"imageBlobPath", "/no/blob.png"}}, {}},
      {"image without a path", Map{{"type", "image"}, {"text", "t"}}, {{text, "t"}}},
  };
  for (const auto& [name, entry, expected] : cases) {
    SCOPED_TRACE(name);
    desktop.pasteboard.otherProgramCopiesString("old");
    EXPECT_EQ(call("clipboardSetPasteboard", entry), nil);
    Items found;
    for (const auto& type : desktop.pasteboard.offeredTypes()) {
      const auto data = desktop.pasteboard.otherProgramPastes(type).value();
      found.emplace_back(type, std::string(data.begin(), data.end()));
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(monitor().ignoreNextChangeCount, desktop.pasteboard.changeCount());
    EXPECT_TRUE(panel().isVisible());
  }
}

TEST_F(ClipboardPanelPasteTest, ALaterEntryIsNotReplacedByAPictureThatTookItsTime) {
  const auto blob = writeBlob();
  const auto picture =
      panelScreen().send("clipboardSetPasteboard", Map{{"type", "image"}, {"imageBlobPath", blob}});
  const auto text = panelScreen().send("clipboardSetPasteboard", Map{{"text", "later"}});
  desktop.dispatch.settle();
  EXPECT_EQ(*picture, nil);
  EXPECT_EQ(*text, nil);
  EXPECT_THAT(desktop.pasteboard.offeredTypes(), ElementsAre("public.utf8-plain-text"));
  EXPECT_EQ(desktop.pasteboard.pastedString(), "later");
}

TEST_F(ClipboardPanelPasteTest, PastesIntoTheApplicationThatWasInFront) {
  ignoreLog("[PasteBack]");
  call("clipboardSetPasteboard", Map{{"text", "from history"}});
  const auto reply = panelScreen().send("clipboardPaste", Map{{"text", "from history"}});
  desktop.dispatch.settle();
  EXPECT_FALSE(panel().isVisible());
  desktop.dispatch.advance(0.14);
  EXPECT_EQ(editor->legacyRequests, 0);
  desktop.dispatch.advance(0.02);
  EXPECT_EQ(editor->legacyRequests, 1);
  EXPECT_FALSE(reply->has_value());
  desktop.dispatch.advance(0.1);
  EXPECT_THAT(*reply, Optional(pasted));
  EXPECT_EQ(editor->text, "from history");
  EXPECT_EQ(editor->legacyRequests, 1);
  desktop.dispatch.advance(1);
  EXPECT_THAT(panelScreen().callsOf("clipboardEntryCaptured"), IsEmpty());
}

TEST_F(ClipboardPanelPasteTest, PastesIntoTheNotesEditorThroughItsChannel) {
  ignoreLog("[");
  call("clipboardHidePanel");
  pressHotkey(HotkeyID::togglePopover);
  pressHotkey(HotkeyID::clipboardPanel);
  mainScreen().takeCalls();
  const auto reply = panelScreen().send("clipboardPaste", Map{});
  desktop.dispatch.advance(0.16);
  EXPECT_THAT(*reply, Optional(pasted));
  EXPECT_THAT(mainScreen().takeCalls(), ElementsAre(MethodCall{"pasteIntoEditor", {}}));
  EXPECT_TRUE(mainWindow().isKeyWindow());
  EXPECT_THAT(desktop.keyboard.posted(), IsEmpty());
}

TEST_F(ClipboardPanelPasteTest, WithoutThePermissionNothingHappens) {
  desktop.accessibility.setTrusted(false);
  EXPECT_EQ(call("clipboardPaste", Map{}), MethodReply(Value("notTrusted")));
  desktop.dispatch.advance(2);
  EXPECT_TRUE(panel().isVisible());
  EXPECT_TRUE(panel().isKeyWindow());
  EXPECT_EQ(editor->legacyRequests, 0);
}

TEST_F(ClipboardPanelPasteTest, TheEndOfTheHostDropsWhatIsStillToBeAnswered) {
  ignoreLog("[");
  const auto write = panelScreen().send("clipboardSetPasteboard",
                                        Map{{"type", "image"}, {"imageBlobPath", writeBlob()}});
  const auto paste = panelScreen().send("clipboardPaste", Map{});
  desktop.dispatch.runUntil([this] { return !panel().isVisible(); }, 1);
  endHost();
  EXPECT_FALSE(paste->has_value());
  EXPECT_EQ(editor->legacyRequests, 0);
}

TEST_F(ClipboardPanelPasteTest, APreviewKeepsThePanelUpAndGivesTheKeyboardBack) {
  auto& preview = desktop.previewPanel;
  const std::function<void()> ends[] = {[&] { desktop.keyboard.press(keyCode::space, 0); },
                                        [&] { desktop.keyboard.press(keyCode::escape, 0); },
                                        [&] { preview.closeByUser(); },
                                        [&] { preview.closeByUser(); }};
  int openings = 0;
  for (const auto& end : ends) {
    EXPECT_EQ(call("clipboardQuickLook", "/tmp/a b.png"), nil);
    EXPECT_TRUE(preview.isVisible());
    EXPECT_EQ(preview.shownItem(), "file:///tmp/a%20b.png");
    EXPECT_EQ(call("clipboardQuickLook", "/tmp/b.png"), nil);
    EXPECT_EQ(preview.shownItem(), "file:///tmp/b.png");
    EXPECT_EQ(preview.openings(), ++openings);
    EXPECT_TRUE(panel().isVisible());
    EXPECT_FALSE(panel().isKeyWindow());
    desktop.keyboard.press(keyCode::leftArrow, 0);
    EXPECT_FALSE(preview.receive({EventType::leftMouseDown, 0, keyCode::escape}));
    EXPECT_TRUE(preview.isVisible());
    end();
    EXPECT_FALSE(preview.isVisible());
    EXPECT_TRUE(panel().isKeyWindow());
    EXPECT_NE(panel().firstResponderDescription(), "nil");
  }
  EXPECT_GT(preview.levels().size(), 8u) << "set again once it is on the screen";
  EXPECT_THAT(preview.levels(), Each(26)) << "above the panel";
  switchToEditor();
  EXPECT_FALSE(panel().isVisible());
}

TEST_F(ClipboardPanelPasteTest, APreviewThatOutlivesThePanelOrTheHostAsksNobody) {
  call("clipboardQuickLook", "/tmp/a.png");
  call("clipboardHidePanel");
  desktop.previewPanel.closeByUser();
  EXPECT_FALSE(panel().isVisible());
  call("clipboardQuickLook", "/tmp/a.png");
  endHost();
  desktop.previewPanel.reloadData();
  EXPECT_EQ(desktop.previewPanel.shownItem(), std::nullopt);
  desktop.previewPanel.closeByUser();
}

}  // namespace
}  // namespace zephyx
