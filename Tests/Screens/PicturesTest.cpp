#include <gtest/gtest.h>

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include "Screens/MainScreenController.h"
#include "Tests/Screens/TestWorld.h"

// The screens with the variety that they meet in use. With ZEPHYX_SCREEN_PICTURES set to a folder,
// what they look like is left there.

namespace zephyx {
namespace {

std::string paint(const std::string& folder, const char* name, QSize size, QColor from, QColor to) {
  QDir().mkpath(QString::fromStdString(folder));
  QImage image(size, QImage::Format_RGB32);
  QPainter painter(&image);
  QLinearGradient gradient(0, 0, size.width(), size.height());
  gradient.setColorAt(0, from);
  gradient.setColorAt(1, to);
  painter.fillRect(image.rect(), gradient);
  painter.setBrush(QColor(255, 255, 255, 90));
  painter.drawEllipse(image.rect().center(), size.height() / 3, size.height() / 3);
  painter.end();
  const std::string path = folder + '/' + name;
  image.save(QString::fromStdString(path));
  return path;
}

Map copied(Map fields, const char* program, const std::string& icon, std::int64_t minutesAgo) {
  fields.append("sourceAppName", program);
  fields.append("sourceAppIconPath", icon);
  fields.append("copiedAtEpochMs",
                std::int64_t{QDateTime::currentMSecsSinceEpoch() - minutesAgo * 60'000});
  return fields;
}

void fillHistory(TestWorld& world) {
  const auto folder = world.folder();
  const auto icon = [&](const char* name, QColor color) {
    return paint(folder + "/clipboard_icons", name, {48, 48}, color, color.darker());
  };
  const auto web = icon("web.png", QColor(0xff, 0x8a, 0x3c));
  const auto editor = icon("editor.png", QColor(0x3c, 0xb3, 0x71));
  const auto files = icon("files.png", QColor(0x4a, 0x90, 0xe2));
  const auto wide =
      paint(folder + "/clipboard_thumbs", "a_thumb.png", {240, 60}, Qt::darkCyan, Qt::darkMagenta);
  const auto tall = paint(folder + "/clipboard_thumbs", "b_thumb.png", {135, 240},
                          QColor(0xff, 0xd5, 0x80), QColor(0xc0, 0x50, 0x60));
  std::string longText = "The quick brown fox jumps over the lazy dog. ";
  while (longText.size() < 200'000) longText += longText;
  const Map entries[] = {
      copied({{"type", "text"}, {"text", "Last year's entry, still here because it is pinned"}},
             "Text Editor", editor, 60 * 24 * 300),
      copied({{"type", "text"}, {"text", "Grüße aus Köln · こんにちは · Привет · مرحبا"}}, "Mail",
             files, 60 * 24 * 3),
      copied({{"type", "file"},
              {"text", "invoice-2024-03.pdf"},
              {"filePath", "/home/anna/Documents/Invoices/invoice-2024-03.pdf"},
              {"byteSize", 348'211}},
             "Files", files, 60 * 26),
      copied({{"type", "image"},
              {"imageBlobPath", folder + "/clipboard_blobs/b.png"},
              {"thumbnailPath", tall},
              {"width", 1080},
              {"height", 1920},
              {"byteSize", 2'311'870}},
             "Screenshot", web, 60 * 5),
      copied({{"type", "text"}, {"text", longText}}, "Text Editor", editor, 125),
      copied({{"type", "url"},
              {"text",
               "https://example.org/a/rather/long/path/that/goes/on/and/on?with=query&and="
               "more#fragment-of-the-page"}},
             "Web Browser", web, 47),
      copied({{"type", "file"},
              {"text", "holiday photograph.jpg"},
              {"filePath", "/home/anna/Pictures/holiday photograph.jpg"},
              {"thumbnailPath", wide},
              {"width", 4000},
              {"height", 1000},
              {"byteSize", 5'100'000}},
             "Files", files, 30),
      copied({{"type", "text"}, {"text", "  \n\tif (found == end) {\n\t\treturn;\n\t}\n"}},
             "Text Editor", editor, 12),
      copied({{"type", "text"}, {"text", "anna@example.org"}}, "Mail", files, 6),
      copied({{"type", "url"}, {"text", "https://example.org"}}, "Web Browser", web, 2),
      copied({{"type", "text"},
              {"text",
               "Dear Sir or Madam, thank you for your letter of the third of March, which "
               "reached us this morning; we shall answer every question in it."}},
             "Text Editor", editor, 0),
  };
  for (const Map& entry : entries) world.call("clipboardEntryCaptured", entry);
}

TEST(Pictures, ClipboardScreen) {
  TestWorld world("clipboardMain");
  fillHistory(world);
  ASSERT_TRUE(world.showPicture(560, 720));
  world.call("clipboardPanelShown");
  ASSERT_TRUE(waitFor([&] { return world.child("entries")->property("count") == 11; }));
  world.press(Qt::Key_P, Qt::ControlModifier);
  world.press(Qt::Key_Down);
  world.settlePicture();
  world.savePicture("clipboard");
  world.press(Qt::Key_End);
  world.press(Qt::Key_P, Qt::ControlModifier);
  world.settlePicture();
  world.savePicture("clipboard-end");
  world.replies["clipboardCheckAccessibility"] = Value(false);
  world.call("clipboardPanelShown");
  world.press(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
  world.settlePicture();
  world.savePicture("clipboard-permission");
  world.press(Qt::Key_Escape);
  world.type("example");
  world.settlePicture();
  world.savePicture("clipboard-search");
}

TEST(Pictures, MainScreen) {
  TestWorld world("main");
  ASSERT_TRUE(world.showPicture(1000, 660));
  for (const char* text : {"Shopping\nBread, cheese and two lemons", "Ideas for the garden",
                           "Meeting with Ben\n\nHe proposes to move the release to the first of "
                           "June.\n\n· tests are green\n· documentation is missing\n"}) {
    world.program()->controller()->metaObject()->invokeMethod(world.program()->controller(),
                                                              "newNote");
    world.program()->controller()->setProperty("text", QString::fromUtf8(text));
  }
  world.settlePicture();
  world.savePicture("main");
  world.program()->controller()->setProperty("showsSettings", false);
  world.program()->controller()->metaObject()->invokeMethod(world.program()->controller(),
                                                            "deleteNote");
  world.click({40, 630});
  world.settlePicture();
  world.savePicture("main-menu");
}

Value hotkey(std::int32_t id, const char* display, std::int32_t modifiers, bool usual) {
  return Map{{"id", id},
             {"keyCode", 17},
             {"modifiers", modifiers},
             {"display", display},
             {"isDefault", usual}};
}

TEST(Pictures, Settings) {
  TestWorld world("main");
  world.replies["hotkeysGet"] =
      Value(List{hotkey(1, "⇧⌘Space", 0x300, true), hotkey(2, "⇧⌘V", 0x300, true),
                 hotkey(3, "⌃⌥⌘T", 0x1900, true), hotkey(4, "⌃⌥⌘O", 0x1900, true),
                 hotkey(5, "⌥⌘F", 0x0900, false), hotkey(6, "⌃⌥⌘L", 0x1900, true),
                 hotkey(8, "⌃⌥⌘P", 0x1900, true), hotkey(9, "⌃⌥⌘K", 0x1900, true),
                 hotkey(10, "⌃⌥⌘M", 0x1900, true)});
  world.replies["hotkeyStartRecording"] = Value(Map{{"keyCode", 17}, {"modifiers", 0x300}});
  world.replies["hotkeySet"] = MethodError{
      "registrationFailed", "No se pudo registrar el atajo con macOS. Se mantuvo el anterior.", 3};
  world.replies["agentsVisibilityGet"] =
      Value(List{Map{{"id", "claude-code"}, {"name", "Claude Code"}, {"visible", true}},
                 Map{{"id", "gemini"}, {"name", "Gemini CLI"}, {"visible", false}},
                 Map{{"id", "openai"}, {"name", "OpenAI Codex"}, {"visible", true}}});
  ASSERT_TRUE(world.showPicture(1000, 660));
  auto* screen = qobject_cast<MainScreenController*>(world.program()->controller());
  screen->server()->setAddress("http://models.example.org");
  world.call("openSettings");
  world.settlePicture();
  world.savePicture("settings-server");
  screen->server()->setAddress("https://models.example.org/v1");
  screen->server()->setModel("large-writer-2");
  screen->server()->storeKey("secret-secret");
  ASSERT_TRUE(waitFor([&] { return screen->server()->hasKey(); }));
  screen->hotkeys()->record(2);
  ASSERT_TRUE(world.waitForCall("hotkeySet"));
  world.settlePicture();
  world.unanswered["hotkeyStartRecording"];
  world.savePicture("settings-error");
  world.child("settings")->setProperty("contentY", 210);
  world.settlePicture();
  world.savePicture("settings-error-scrolled");
  world.child("settings")->setProperty("contentY", 780);
  world.settlePicture();
  world.savePicture("settings-agents");
  screen->hotkeys()->record(4);
  ASSERT_TRUE(waitFor([&] { return !world.unanswered["hotkeyStartRecording"].empty(); }));
  world.settlePicture();
  world.savePicture("settings-recording");
}

/// As the host does: the size of the panel follows what the screen asks for.
void showSession(TestWorld& world, const char* mode, const std::string& text, const char* source) {
  world.call("translatePanelShown");
  world.call("translateShow", Map{{"text", text}, {"mode", mode}, {"source", source}});
}

void answer(TestWorld& world, const std::string& text) {
  const auto gen = *world.callsOf("translateRequest").back().arguments.asMap()->find("gen");
  std::string piece;
  for (const char letter : text) {
    piece += letter;
    if (letter != ' ') continue;
    world.call("translateToken", Map{{"token", std::exchange(piece, "")}, {"gen", gen}});
  }
  world.call("translateToken", Map{{"token", piece}, {"gen", gen}});
}

void endAnswer(TestWorld& world, const char* method, Map fields) {
  fields.append("gen", *world.callsOf("translateRequest").back().arguments.asMap()->find("gen"));
  world.call(method, fields);
}

constexpr auto letter =
    "Sehr geehrte Frau Martín,\n\nvielen Dank für Ihren Brief vom dritten März, der uns heute "
    "Morgen erreicht hat. Wir werden jede Ihrer Fragen beantworten, bitten aber um etwas Geduld, "
    "weil die Unterlagen noch geprüft werden.\n\nMit freundlichen Grüßen\nAnna Weber";
constexpr auto translated =
    "Dear Ms Martín,\n\nThank you for your letter of the third of March, which reached us this "
    "morning. We shall answer every one of your questions, but ask for a little patience, as the "
    "documents are still being examined.\n\nYours sincerely\nAnna Weber";

TEST(Pictures, TranslateScreen) {
  for (const bool wide : {false, true}) {
    TestWorld world("translateMain");
    const QString suffix = wide ? "-wide" : "";
    ASSERT_TRUE(world.showPicture(wide ? 1060 : 620, wide ? 640 : 580));
    const auto save = [&](const char* name) {
      world.settlePicture();
      world.savePicture(QLatin1String(name) + suffix);
    };
    showSession(world, "translate", letter, "external");
    save("translate-begins");
    answer(world, std::string(translated).substr(0, 140));
    auto* edit = world.child("result")->property("edit").value<QObject*>();
    EXPECT_TRUE(waitFor([&] { return edit->property("length").toInt() > 130; }));
    save("translate-streaming");
    answer(world, std::string(translated).substr(140));
    endAnswer(world, "translateDone", {});
    save("translate-done");
    world.replies["translatePaste"] = Value("notTrusted");
    world.press(Qt::Key_Return);
    ASSERT_TRUE(world.waitForCall("translatePaste"));
    save("translate-permission");
    world.press(Qt::Key_C, Qt::ControlModifier);
    std::string longText;
    for (int line = 1; line <= 60; ++line)
      longText += "Line " + std::to_string(line) + " · مرحبا · こんにちは\n";
    world.program()->controller()->setProperty("text", QString::fromStdString(longText));
    save("translate-edited");
    showSession(world, "improve", "i think we shuld meet tomorow, its importent", "editor");
    answer(world, "I think we should meet tomorrow");
    endAnswer(world, "translateError",
              {{"message", "The connection was lost in the middle of the answer."},
               {"code", "interrupted"}});
    save("translate-lost");
    showSession(world, "spelling", "teh quick brwon fox", "external");
    endAnswer(world, "translateError",
              {{"message",
                "The server refused the key (401): this key ended on the first of March; the "
                "administrator of models.example.org gives out new ones."},
               {"code", "refused"}});
    save("translate-error");
    showSession(world, "translate", "Guten Morgen", "external");
    endAnswer(world, "translateError",
              {{"message", "No AI server is set up yet."}, {"code", "not_configured"}});
    save("translate-not-configured");
    showSession(world, "translate", "", "external");
    save("translate-empty");
  }
}

}  // namespace
}  // namespace zephyx
