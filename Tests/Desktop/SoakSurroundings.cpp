#include <optional>

#include "Tests/Desktop/DesktopRamps.h"
#include "Tests/Desktop/Soak.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// With a microphone, above its row and those of the two locks.
constexpr int sliderRow = 9;

// In the main window with its settings: what records the clipboard panel's hotkey, and the way
// back.
constexpr int recorderX = 907;
constexpr int recorderY = 424;
constexpr int backX = 318;
constexpr int backY = 37;

constexpr std::uint16_t shiftSuper = 0x41;

}  // namespace

bool Soak::isHidden() {
  // It hides once it has heard that it was in front.
  if (const auto window = program_->mainWindow()) windows().ping(window->id);
  return line_->activate() && waitFor([&] { return !program_->mainWindow(); });
}

bool Soak::panelComesAndGoes() {
  return line_->activate() && program_->openPanel() && program_->leavePanel();
}

void Soak::addSurroundings() {
  add("open the menu, watch its rings", [this] {
    if (!program_->openMenu()) return false;
    const auto menu = *program_->menu();
    const auto rings = [&] { return windows().pixels(menu.id, 0, 0, menu.width, 90); };
    const auto cool = rings();
    sensors_.setProcessor("91000");
    const bool isWarm = waitFor([&] { return rings() != cool; });
    input().movePointer(menu.x + menu.width / 2 - 38, menu.y + 40);
    const auto warm = rings();
    sensors_.setProcessor("50000");
    const bool isCool = waitFor([&] { return rings() != warm; });
    return program_->leaveMenu() && isWarm && isCool;
  });
  add("dim the displays and back", [this] {
    DesktopRamps ramps;
    const auto output = ramps.outputs().at(0);
    const auto isAt = [&](int least, int most) {
      return waitFor([&] {
        const int level = ramps.ramp(output)[0].back();
        return level >= least && level <= most;
      });
    };
    if (!program_->openMenu()) return false;
    for (int row = 0; row < sliderRow; ++row) input().tap(key::Up);
    input().tap(key::Home);
    const bool isDark = isAt(1, 0x4000);
    input().tap(key::End);
    const bool isBright = isAt(0xf000, 0xffff);
    return program_->leaveMenu() && isDark && isBright;
  });
  add("show the main window", [this] {
    return program_->chooseRow(ZephyxProcess::showRow) &&
           waitFor([&] { return program_->mainWindow().has_value(); }) && isHidden();
  });
  add("record another hotkey and back", [this] {
    if (!program_->chooseRow(ZephyxProcess::settingsRow)) return false;
    std::optional<DesktopWindow> window;
    const auto isShown = [&] { return program_->hasKeyboard(window = program_->mainWindow()); };
    if (!waitFor(isShown)) return false;
    for (const auto chosen : {key::B, key::V}) {
      const auto isTaken = [&] {
        input().click(window->x + recorderX, window->y + recorderY);
        pass(milliseconds(100));
        input().chord({key::Shift, key::Super, chosen});
        return waitFor([&] { return windows().isGrabbedByOthers(chosen, shiftSuper); },
                       milliseconds(500));
      };
      if (!waitFor(isTaken)) return false;
    }
    input().click(window->x + backX, window->y + backY);
    return isHidden();
  });
  add("start a second time", [this] {
    auto second = desktop_.start({ZephyxProcess::executable().string()});
    return second.waitForExit() == 0 &&
           waitFor([&] { return program_->hasKeyboard(program_->mainWindow()); }) && isHidden();
  });
  add("lock and unlock both devices", [this] {
    for (const auto device : {key::K, key::P}) {
      for (const bool locks : {true, false}) {
        input().chord({key::Control, key::Alt, key::Super, device});
        if (!waitFor([&] { return program_->notice().has_value() == locks; })) return false;
      }
    }
    return true;
  });
  add("a display comes and goes", [this] {
    const auto panelOpensAt = [&](int pointer, auto isThere) {
      input().movePointer(pointer, 400);
      const auto opens = [&] {
        return program_->openPanel() && isThere(program_->panel()->x) && program_->leavePanel();
      };
      return waitFor(opens) || !program_->leavePanel();
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
  });
  add("a microphone comes and goes", [this] {
    const auto pactl = [&](std::vector<std::string> arguments) {
      arguments.insert(arguments.begin(), "pactl");
      return desktop_.run(arguments);
    };
    const auto loaded = pactl({"load-module", "module-null-source", "source_name=mic9"});
    sound_->makeDefault("mic9");
    const auto becomes = [&](bool muted) {
      if (sound_->isMuted("mic9") == muted) return true;
      input().chord({key::Control, key::Alt, key::Super, key::M});
      return waitFor([&] { return sound_->isMuted("mic9") == muted; }, milliseconds(500));
    };
    bool isSwitched = true;
    for (const bool muted : {true, false})
      isSwitched = isSwitched && waitFor([&] { return becomes(muted); }, seconds(3));
    const auto number = loaded.output.substr(0, loaded.output.find('\n'));
    const bool isUnloaded = pactl({"unload-module", number}).status == 0;
    sound_->makeDefault("mic0");
    return isSwitched && isUnloaded;
  });
  add("restart the sound server", [this] {
    sound_.reset();
    sound_ = std::make_unique<PulseServer>(desktop_);
    return waitFor([&] { return sound_->hasClient("Zephyx"); }, seconds(10), milliseconds(50));
  });
  add("restart the tray", [this] {
    desktop_.stopTray();
    const bool isGone = waitFor([&] { return !program_->trayIcon(); });
    desktop_.startTray();
    return isGone && waitFor([&] { return program_->trayIcon().has_value(); });
  });
  add("restart the window manager", [this] {
    desktop_.stopWindowManager();
    desktop_.startWindowManager();
    if (!waitFor([&] { return !windows().managed().empty(); })) return false;
    // Without the frames that they had, they have moved by a title bar.
    for (const auto* target : {editor_.get(), line_.get(), terminal_.get()})
      desktop_.run({"xdotool", "windowmove", std::to_string(target->window().id), "200", "200"});
    return panelComesAndGoes();
  });
  add("restart the compositor", [this] {
    desktop_.stopCompositor();
    desktop_.startCompositor();
    return panelComesAndGoes();
  });
}

}  // namespace zephyx
