#include <algorithm>
#include <optional>

#include "Tests/Desktop/DesktopRamps.h"
#include "Tests/Desktop/Soak.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// Rows of the menu that can be chosen, from its bottom: Quit, Settings, Import, Export, Show, Mute,
// the two locks.
constexpr int settingsRow = 2;
constexpr int showRow = 5;
constexpr int sliderRow = 9;

// In the main window with its settings: what records the clipboard panel's hotkey, and the way
// back.
constexpr int recorderX = 907;
constexpr int recorderY = 424;
constexpr int backX = 318;
constexpr int backY = 37;

constexpr std::uint16_t shiftSuper = 0x41;

}  // namespace

bool Soak::openMenu() {
  return waitFor([&] {
    const auto icon = program_->trayIcon();
    if (!icon) return false;
    input().click(icon->centerX(), icon->centerY());
    // It is drawn once it has the keyboard.
    return waitFor(
        [&] {
          const auto menu = program_->menu();
          return menu && windows().distinctColors(*menu) > 8;
        },
        seconds(1));
  });
}

bool Soak::closeMenu() {
  input().tap(key::Escape);
  return waitFor([&] { return !program_->menu(); });
}

bool Soak::chooseRow(int fromBottom) {
  if (!openMenu()) return false;
  for (int row = 0; row < fromBottom; ++row) input().tap(key::Up);
  input().tap(key::Return);
  return waitFor([&] { return !program_->menu(); });
}

bool Soak::useMenu() {
  if (!openMenu()) return false;
  const auto menu = *program_->menu();
  const auto rings = [&] { return windows().pixels(menu.id, 0, 0, menu.width, 90); };
  const auto cool = rings();
  sensors_.setProcessor("91000");
  const bool isWarm = waitFor([&] { return rings() != cool; });
  input().movePointer(menu.x + menu.width / 2 - 38, menu.y + 40);
  const auto warm = rings();
  sensors_.setProcessor("50000");
  const bool isCool = waitFor([&] { return rings() != warm; });
  return closeMenu() && isWarm && isCool;
}

bool Soak::dim() {
  DesktopRamps ramps;
  const auto output = ramps.outputs().at(0);
  const auto isAt = [&](int least, int most) {
    return waitFor([&] {
      const int level = ramps.ramp(output)[0].back();
      return level >= least && level <= most;
    });
  };
  if (!openMenu()) return false;
  for (int row = 0; row < sliderRow; ++row) input().tap(key::Up);
  input().tap(key::Home);
  const bool isDark = isAt(1, 0x4000);
  input().tap(key::End);
  const bool isBright = isAt(0xf000, 0xffff);
  return closeMenu() && isDark && isBright;
}

bool Soak::isHidden() {
  // It hides once it has heard that it was in front.
  if (const auto window = program_->mainWindow()) windows().ping(window->id);
  return line_->activate() && waitFor([&] { return !program_->mainWindow(); });
}

bool Soak::showMainWindow() {
  return chooseRow(showRow) && waitFor([&] { return program_->mainWindow().has_value(); }) &&
         isHidden();
}

bool Soak::recordHotkey() {
  if (!chooseRow(settingsRow)) return false;
  std::optional<DesktopWindow> window;
  const auto isShown = [&] {
    window = program_->mainWindow();
    return window && windows().active() == window->id;
  };
  if (!waitFor(isShown)) return false;
  for (const auto chosen : {key::B, key::V}) {
    const bool isTaken = waitFor([&] {
      input().click(window->x + recorderX, window->y + recorderY);
      pass(milliseconds(100));
      input().chord({key::Shift, key::Super, chosen});
      return waitFor([&] { return windows().isGrabbedByOthers(chosen, shiftSuper); },
                     milliseconds(500));
    });
    if (!isTaken) return false;
  }
  input().click(window->x + backX, window->y + backY);
  return isHidden();
}

bool Soak::secondStart() {
  auto second = desktop_.start({ZephyxProcess::executable().string()});
  return second.waitForExit() == 0 && waitFor([&] {
           const auto window = program_->mainWindow();
           return window && windows().active() == window->id;
         }) &&
         isHidden();
}

bool Soak::lock() {
  const auto isLocked = [&](bool expected) {
    return waitFor([&] {
      return std::ranges::any_of(windows().viewable(), [&](const DesktopWindow& window) {
               return window.pid == program_->pid() && window.width > 300 && window.height > 30 &&
                      window.height < 60;
             }) == expected;
    });
  };
  for (const auto device : {key::K, key::P}) {
    for (const bool locks : {true, false}) {
      input().chord({key::Control, key::Alt, key::Super, device});
      if (!isLocked(locks)) return false;
    }
  }
  return true;
}

bool Soak::changeDisplays() {
  const auto panelOpensAt = [&](int pointer, auto isThere) {
    input().movePointer(pointer, 400);
    return waitFor([&] { return openPanel() && isThere(program_->panel()->x) && leavePanel(); }) ||
           !leavePanel();
  };
  const auto randr = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "xrandr");
    return desktop_.run(arguments).status == 0;
  };
  return randr({"--addmode", "DUMMY1", "1280x800"}) &&
         randr({"--output", "DUMMY1", "--mode", "1280x800", "--right-of", "DUMMY0"}) &&
         panelOpensAt(1900, [](int x) { return x >= 1280; }) &&
         randr({"--output", "DUMMY1", "--off"}) &&
         panelOpensAt(640, [](int x) { return x < 1280; });
}

bool Soak::changeMicrophones() {
  const auto pactl = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "pactl");
    return desktop_.run(arguments);
  };
  const auto loaded = pactl({"load-module", "module-null-source", "source_name=mic9"});
  sound_->makeDefault("mic9");
  bool isSwitched = true;
  for (const bool muted : {true, false}) {
    isSwitched =
        isSwitched &&
        waitFor(
            [&] {
              if (sound_->isMuted("mic9") == muted) return true;
              input().chord({key::Control, key::Alt, key::Super, key::M});
              return waitFor([&] { return sound_->isMuted("mic9") == muted; }, milliseconds(500));
            },
            seconds(3));
  }
  const auto number = loaded.output.substr(0, loaded.output.find('\n'));
  const bool isUnloaded = pactl({"unload-module", number}).status == 0;
  sound_->makeDefault("mic0");
  return isSwitched && isUnloaded;
}

bool Soak::restartSoundServer() {
  sound_.reset();
  sound_ = std::make_unique<PulseServer>(desktop_);
  return waitFor([&] { return sound_->hasClient("Zephyx"); }, seconds(10), milliseconds(50));
}

bool Soak::restartTray() {
  desktop_.stopTray();
  const bool isGone = waitFor([&] { return !program_->trayIcon(); });
  desktop_.startTray();
  return isGone && waitFor([&] { return program_->trayIcon().has_value(); });
}

bool Soak::restartWindowManager() {
  desktop_.stopWindowManager();
  desktop_.startWindowManager();
  if (!waitFor([&] { return !windows().managed().empty(); })) return false;
  // Without the frames that they had, they have moved by a title bar.
  for (const auto* target : {editor_.get(), line_.get(), terminal_.get()})
    desktop_.run({"xdotool", "windowmove", std::to_string(target->window().id), "200", "200"});
  return line_->activate() && openPanel() && leavePanel();
}

bool Soak::restartCompositor() {
  desktop_.stopCompositor();
  desktop_.startCompositor();
  return line_->activate() && openPanel() && leavePanel();
}

}  // namespace zephyx
