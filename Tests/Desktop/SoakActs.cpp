#include <algorithm>

#include "Tests/Desktop/ClipboardProgram.h"
#include "Tests/Desktop/Soak.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

}  // namespace

bool Soak::isRecorded(const std::function<void()>& copy) {
  const auto before = program_->history().lastId();
  copy();
  return waitFor([&] { return program_->history().lastId() > before; }, seconds(10));
}

bool Soak::copyText(std::size_t size) {
  std::string text = "copy " + std::to_string(++copies_);
  while (text.size() < size) text += " lorem ipsum dolor";
  return isRecorded([&] { desktop_.copy(text); });
}

bool Soak::pasteInto(TargetProgram& target) {
  const auto word = "word" + std::to_string(++copies_);
  if (!target.activate() || !isRecorded([&] { desktop_.copy(word); })) return false;
  if (&target != terminal_.get()) input().chord({key::Control, key::A});
  if (!program_->openPanel()) return false;
  input().tap(key::Return);
  return waitFor([&] { return target.text().ends_with(word); }) && !program_->panel();
}

bool Soak::askForTranslation() {
  const int requests = server_->requests();
  if (!line_->activate()) return false;
  input().chord({key::Control, key::A});
  return program_->openTranslation() && waitFor([&] { return server_->requests() > requests; });
}

void Soak::addActs() {
  add("copy a word", [this] { return copyText(12); });
  add("copy a page", [this] { return copyText(60'000); });
  add("copy a book", [this] { return copyText(4'000'000); });
  add("copy a link", [this] {
    return isRecorded(
        [&] { desktop_.copy("https://example.org/page?number=" + std::to_string(++copies_)); });
  });
  add("copy an image", [this] {
    constexpr const char* sizes[] = {"60x40", "800x500", "3000x2000"};
    return std::ranges::all_of(sizes, [&](const std::string& size) {
      const auto bytes = readFile(desktop_.home() / (size + ".png"));
      return isRecorded([&] { desktop_.copy(bytes, "image/png"); });
    });
  });
  add("copy a file", [this] {
    const auto path = desktop_.home() / "800x500.png";
    return isRecorded([&] { desktop_.copy("file://" + path.string() + "\r\n", "text/uri-list"); });
  });
  add("copy 20 texts in a quick row", [this] {
    ClipboardProgram owner;
    std::vector<std::string> texts;
    for (int text = 0; text < 20; ++text) texts.push_back("quick " + std::to_string(++copies_));
    const auto last = texts.back();
    owner.copyTexts(std::move(texts), milliseconds(10));
    return program_->waitForEntry(last);
  });
  add("search and preview in the panel", [this] {
    if (!line_->activate() || !program_->openPanel()) return false;
    const auto panel = program_->panel()->id;
    input().type("quick");
    input().chord({key::Control, key::Space});
    const bool isShown = waitFor([&] {
      const auto focused = windows().focused();
      return focused != panel && windows().processOf(focused) == program_->pid() &&
             program_->panel();
    });
    input().tap(key::Escape);
    const bool isBack = waitFor([&] { return windows().focused() == panel; });
    return program_->leavePanel() && isShown && isBack;
  });
  add("paste into a Qt program", [this] { return pasteInto(*line_); });
  add("paste into a GTK program", [this] { return pasteInto(*editor_); });
  add("paste into a terminal", [this] { return pasteInto(*terminal_); });
  const auto leaveTranslation = [this](key::Code key) {
    const auto isGone = [&] {
      input().tap(key);
      return !program_->translatePanel();
    };
    return waitFor(isGone, seconds(5), milliseconds(50));
  };
  add("translate and paste", [this, leaveTranslation] {
    const int answered = server_->answered();
    return askForTranslation() && waitFor([&] { return server_->answered() > answered; }) &&
           leaveTranslation(key::Return) && line_->waitForText("una línea traducida");
  });
  add("cancel a translation", [this, leaveTranslation] {
    server_->setHangs(true);
    const int abandoned = server_->abandoned();
    const bool isCancelled = askForTranslation() && leaveTranslation(key::Escape) &&
                             waitFor([&] { return server_->abandoned() > abandoned; });
    server_->setHangs(false);
    return isCancelled;
  });
}

}  // namespace zephyx
