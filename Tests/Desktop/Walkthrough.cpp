#include <filesystem>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <string>

#include "Tests/Desktop/ChatServer.h"
#include "Tests/Desktop/TargetProgram.h"
#include "Tests/Desktop/ZephyxProcess.h"
#include "Tests/Linux/SensorTree.h"

namespace zephyx {
namespace {

std::string where(const DesktopWindow& window) {
  return std::to_string(window.width) + " x " + std::to_string(window.height) + " at " +
         std::to_string(window.x) + ", " + std::to_string(window.y);
}

/// The main job as a user does it, with programs of others, one picture and one sentence per step.
class Walkthrough {
 public:
  explicit Walkthrough(std::filesystem::path pictures)
      : pictures_(std::move(pictures)), desktop_({.compositor = true, .tray = true}) {
    std::filesystem::remove_all(pictures_);
    std::filesystem::create_directories(pictures_);
  }

  /// True when every step happened.
  bool run() {
    std::cout << "A private desktop on display " << desktop_.display()
              << ": X server, window manager, compositor, tray.\n";
    try {
      start();
      copyThings();
      pasteWithKeyboard();
      pasteWithMouse();
      pasteIntoTerminal();
      searchAndPreview();
      translateSelection();
      menuAndMainWindow();
    } catch (const std::exception& error) {
      std::cout << error.what() << '\n';
      ++failures_;
    }
    writeFile(pictures_ / "zephyx.log", program_ ? program_->log() : "");
    std::cout << (failures_ ? "The walk FAILED" : "Every step happened") << "; pictures and log in "
              << pictures_.string() << '\n';
    return failures_ == 0;
  }

 private:
  /// Waits for the outcome, takes the picture and says what was seen, or that it was not.
  void step(const std::string& name, const std::string& words,
            const std::function<bool()>& happened) {
    ++number_;
    const bool ok = waitFor(happened, std::chrono::seconds(10));
    // The last frame of a change reaches the screen after the fact itself.
    pass(std::chrono::milliseconds(300));
    const std::string number = (number_ < 10 ? "0" : "") + std::to_string(number_);
    const auto picture = pictures_ / (number + "-" + name + ".png");
    desktop_.screenshot(picture);
    std::cout << number << (ok ? "  saw:     " : "  NOT SEEN: ") << words << "  ["
              << picture.string() << "]" << std::endl;
    if (!ok) ++failures_;
  }

  /// `step`, and no further when it did not happen.
  void mustStep(const std::string& name, const std::string& words,
                const std::function<bool()>& happened) {
    const int before = failures_;
    step(name, words, happened);
    if (failures_ != before) throw std::runtime_error("what follows rests on this step");
  }

  bool panelHasKeyboard() {
    const auto panel = program_->panel();
    return program_->hasKeyboard(panel) && desktop_.windows().distinctColors(*panel) > 4;
  }

  void start() {
    ZephyxProcess::useChatServer(desktop_, server_.address());
    program_ =
        std::make_unique<ZephyxProcess>(desktop_, Environment{{"ZEPHYX_HWMON", sensors_.folder()}});
    mustStep("started", "Zephyx's main window, its icon in the tray; Shift+Super+V is its own",
             [&] {
               const auto window = program_->mainWindow();
               return window && desktop_.windows().distinctColors(*window) > 4 &&
                      program_->trayIcon() && desktop_.windows().isGrabbedByOthers(key::V, 0x41);
             });
  }

  void copyThings() {
    editor_ = std::make_unique<TargetProgram>(desktop_, TargetProgram::Kind::Gtk);
    desktop_.input().type("a line typed in the editor");
    editor_->copyAll();
    mustStep("copied-text",
             "a text copied in Mousepad, recorded with its source; the main window hid", [&] {
               const auto rows = program_->history().rows();
               return rows.size() == 1 && rows[0].text == "a line typed in the editor" &&
                      rows[0].sourceAppName == "Mousepad" && !program_->mainWindow();
             });

    line_ = std::make_unique<TargetProgram>(desktop_, TargetProgram::Kind::Qt,
                                            "https://example.org/page?q=1");
    line_->copyAll();
    mustStep("copied-link", "a link copied in a Qt program, recorded as a link", [&] {
      const auto rows = program_->history().rows();
      return rows.size() == 2 && rows[1].kind == "url";
    });

    const auto picture = desktop_.home() / "sunset.png";
    desktop_.run({"convert", "-size", "800x500", "gradient:#1b2a6b-#f2994a", picture.string()});
    desktop_.copy(readFile(picture), "image/png");
    mustStep("copied-image", "an image copied with xclip, recorded with its thumbnail", [&] {
      const auto rows = program_->history().rows();
      return rows.size() == 3 && rows[2].kind == "image" &&
             std::filesystem::exists(rows[2].thumbnailPath);
    });

    desktop_.copy("file://" + picture.string() + "\r\n", "text/uri-list");
    mustStep("copied-file", "a file copied with xclip, recorded with its path", [&] {
      const auto rows = program_->history().rows();
      return rows.size() == 4 && rows[3].kind == "file" && rows[3].filePath == picture.string();
    });
    desktop_.copy("the newest text");
    (void)program_->waitForEntry("the newest text");
  }

  void pasteWithKeyboard() {
    (void)editor_->activate();
    desktop_.input().chord({key::Control, key::End});
    desktop_.input().tap(key::Return);
    (void)program_->openPanel();
    mustStep("history", "the history in its panel, with the keyboard, after Shift+Super+V", [&] {
      const auto panel = program_->panel();
      return panelHasKeyboard() && panel && where(*panel) == "560 x 720 at 360, 40";
    });
    desktop_.input().tap(key::Return);
    mustStep("pasted-with-enter", "Enter: the newest entry pasted into Mousepad, which is in front",
             [&] {
               return !program_->panel() && editor_->isActive() &&
                      editor_->text().ends_with("editor\nthe newest text");
             });
  }

  void pasteWithMouse() {
    (void)line_->activate();
    desktop_.input().chord({key::Control, key::A});
    (void)program_->openPanel();
    mustStep("history-for-mouse", "the history again, over the Qt program",
             [&] { return panelHasKeyboard(); });
    const auto panel = program_->panel().value();
    // The fifth entry, below two that show pictures.
    desktop_.input().click(panel.x + panel.width / 2, panel.y + 481);
    step("pasted-with-mouse",
         "a click: the oldest entry, under the pointer, pasted into the Qt program", [&] {
           return !program_->panel() && line_->isActive() &&
                  line_->text() == "a line typed in the editor";
         });
  }

  void pasteIntoTerminal() {
    const TargetProgram terminal(desktop_, TargetProgram::Kind::Terminal);
    (void)program_->openPanel();
    mustStep("history-for-terminal", "the history over xterm", [&] { return panelHasKeyboard(); });
    desktop_.input().tap(key::Return);
    step("pasted-into-terminal", "the entry arrived in xterm, by the chord that terminals know",
         [&] { return !program_->panel() && terminal.text() == "the newest text"; });
  }

  void searchAndPreview() {
    (void)editor_->activate();
    (void)program_->openPanel();
    mustStep("history-for-search", "the history once more", [&] { return panelHasKeyboard(); });
    desktop_.input().type("sunset");
    step("searched", "typing narrowed the list to the file's name",
         [&] { return panelHasKeyboard(); });
    const WindowId panel = program_->panel().value().id;
    desktop_.input().chord({key::Control, key::Space});
    step("previewed", "Control+Space: a preview above the panel, which stays", [&] {
      const auto active = desktop_.windows().describe(desktop_.windows().active());
      return active.pid == program_->pid() && active.id != panel && program_->panel();
    });
    desktop_.input().tap(key::Escape);
    step("preview-closed", "Escape closed the preview; the panel has the keyboard again",
         [&] { return panelHasKeyboard(); });
    // The first Escape takes back the search, the second one leaves.
    desktop_.input().tap(key::Escape);
    desktop_.input().tap(key::Escape);
    step("escaped", "Escape closed the panel; Mousepad has the keyboard back",
         [&] { return !program_->panel() && editor_->isActive(); });
  }

  void translateSelection() {
    if (!line_->activate()) throw std::runtime_error("the Qt program does not come to the front");
    desktop_.input().chord({key::Control, key::A});
    (void)program_->openTranslation();
    mustStep("translated", "Control+Alt+Super+T: the selected text and the answer of a server",
             [&] {
               return program_->hasKeyboard(program_->translatePanel()) && server_.answered() > 0;
             });
    desktop_.input().chord({key::Control, key::B});
    step("translated-wide", "Control+B: both side by side",
         [&] { return !program_->translatePanel(); });
    desktop_.input().tap(key::Return);
    step("translation-pasted", "Enter: the answer in the place of the selection",
         [&] { return line_->isActive() && line_->text() == "una línea traducida en el editor"; });
  }

  void menuAndMainWindow() {
    (void)program_->openMenu();
    step("menu", "a click on the tray icon: the menu, with its rings and shortcut hints",
         [&] { return program_->menu().has_value(); });
    sensors_.setProcessor("72000");
    const auto menu = program_->menu().value_or(DesktopWindow());
    const auto rings = [&] { return desktop_.windows().pixels(menu.id, 0, 0, menu.width, 90); };
    const auto before = rings();
    step("menu-temperature", "a sensor on the processor's die: a fourth ring",
         [&] { return rings() != before; });
    desktop_.input().movePointer(menu.x + menu.width / 2 - 38, menu.y + 40);
    step("menu-value", "the pointer over the ring of the temperature: its value",
         [] { return true; });
    desktop_.input().tap(key::Escape);
    step("menu-closed", "Escape closed the menu", [&] { return !program_->menu(); });
    auto second = desktop_.start({ZephyxProcess::executable().string()});
    step("second-start", "a second start brought the main window up and ended",
         [&] { return program_->hasKeyboard(program_->mainWindow()) && !second.isRunning(); });
  }

  std::filesystem::path pictures_;
  int number_ = 0;
  int failures_ = 0;
  ChatServer server_{{"una línea", " traducida", " en el editor"}};
  VirtualDesktop desktop_;
  SensorTree sensors_{desktop_.home() / "hwmon"};
  std::unique_ptr<ZephyxProcess> program_;
  std::unique_ptr<TargetProgram> editor_;
  std::unique_ptr<TargetProgram> line_;
};

}  // namespace
}  // namespace zephyx

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: walkthrough FOLDER-FOR-PICTURES\n";
    return 2;
  }
  try {
    return zephyx::Walkthrough(argv[1]).run() ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
