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

bool Soak::copyLink() {
  return isRecorded(
      [&] { desktop_.copy("https://example.org/page?number=" + std::to_string(++copies_)); });
}

bool Soak::copyImage() {
  constexpr const char* sizes[] = {"60x40", "800x500", "3000x2000"};
  return std::ranges::all_of(sizes, [&](const std::string& size) {
    const auto bytes = readFile(desktop_.home() / (size + ".png"));
    return isRecorded([&] { desktop_.copy(bytes, "image/png"); });
  });
}

bool Soak::copyFile() {
  const auto path = desktop_.home() / "800x500.png";
  return isRecorded([&] { desktop_.copy("file://" + path.string() + "\r\n", "text/uri-list"); });
}

bool Soak::copyInQuickRow() {
  ClipboardProgram owner;
  std::vector<std::string> texts;
  for (int text = 0; text < 20; ++text) texts.push_back("quick " + std::to_string(++copies_));
  const auto last = texts.back();
  owner.copyTexts(std::move(texts), milliseconds(10));
  return program_->waitForEntry(last);
}

bool Soak::openPanel() {
  input().chord({key::Shift, key::Super, key::V});
  return waitFor([&] {
    const auto panel = program_->panel();
    return panel && windows().focused() == panel->id;
  });
}

bool Soak::leavePanel() {
  // The first Escape may only take back a search.
  for (int presses = 0; program_->panel() && presses < 3; ++presses) {
    input().tap(key::Escape);
    (void)waitFor([&] { return !program_->panel(); }, milliseconds(400));
  }
  return !program_->panel();
}

bool Soak::searchAndPreview() {
  if (!line_->activate() || !openPanel()) return false;
  const auto panel = program_->panel()->id;
  input().type("quick");
  input().chord({key::Control, key::Space});
  const bool isShown = waitFor([&] {
    const auto focused = windows().focused();
    return focused != panel && windows().processOf(focused) == program_->pid();
  });
  input().tap(key::Escape);
  const bool isBack = waitFor([&] { return windows().focused() == panel; });
  return leavePanel() && isShown && isBack;
}

bool Soak::pasteInto(TargetProgram& target) {
  const auto word = "word" + std::to_string(++copies_);
  if (!target.activate() || !isRecorded([&] { desktop_.copy(word); })) return false;
  if (&target != terminal_.get()) input().chord({key::Control, key::A});
  if (!openPanel()) return false;
  input().tap(key::Return);
  return waitFor([&] { return target.text().ends_with(word); }) && !program_->panel();
}

bool Soak::askForTranslation() {
  const int requests = server_->requests();
  if (!line_->activate()) return false;
  input().chord({key::Control, key::A});
  input().chord({key::Control, key::Alt, key::Super, key::T});
  return waitFor([&] {
    const auto panel = program_->translatePanel();
    return panel && windows().focused() == panel->id && server_->requests() > requests;
  });
}

bool Soak::translate() {
  const int answered = server_->answered();
  return askForTranslation() && waitFor([&] { return server_->answered() > answered; }) &&
         waitFor(
             [&] {
               input().tap(key::Return);  // nothing until the answer is there
               return !program_->translatePanel();
             },
             seconds(5), milliseconds(50)) &&
         line_->waitForText("una línea traducida");
}

bool Soak::cancelTranslation() {
  server_->setHangs(true);
  const int abandoned = server_->abandoned();
  const bool isCancelled = askForTranslation() &&
                           waitFor(
                               [&] {
                                 input().tap(key::Escape);
                                 return !program_->translatePanel();
                               },
                               seconds(5), milliseconds(50)) &&
                           waitFor([&] { return server_->abandoned() > abandoned; });
  server_->setHangs(false);
  return isCancelled;
}

}  // namespace zephyx
