#include "Benchmarks/Measuring.h"
#include "Tests/Desktop/ChatServer.h"
#include "Tests/Desktop/TargetProgram.h"
#include "Tests/Linux/SensorTree.h"

namespace zephyx {

// From the hot key with text selected in a GTK editor to the panel on the screen, and to the text's
// arrival at the server, which is what the panel asks as soon as it has the text.
void measureTranslation() {
  ChatServer server({"answer"});
  VirtualDesktop desktop;
  ZephyxProcess::useChatServer(desktop, server.address());
  const auto program = readyProgram(desktop);
  const TargetProgram target(desktop, TargetProgram::Kind::Gtk, "some words to translate");
  target.copyAll();
  std::vector<double> visible, delivered;
  for (int round = 0; round < 12; ++round) {
    const int before = server.requests();
    const auto start = Clock::now();
    desktop.input().chord({key::Control, key::Alt, key::Super, key::T});
    require(waitFor([&] { return program->translatePanel().has_value(); }, milliseconds(5000),
                    milliseconds(1)),
            "the panel did not open");
    visible.push_back(since(start));
    require(
        waitFor([&] { return server.requests() > before; }, milliseconds(5000), milliseconds(1)),
        "the text did not arrive");
    delivered.push_back(since(start));
    const auto isGone = [&] {
      desktop.input().tap(key::Escape);
      return !program->translatePanel() && target.isActive();
    };
    require(waitFor(isGone, milliseconds(5000), milliseconds(50)), "the panel did not close");
    pass(milliseconds(200));
  }
  // The first showing loads the screen.
  visible.erase(visible.begin());
  delivered.erase(delivered.begin());
  report("translate.visible", median(visible), "ms");
  report("translate.text", median(delivered), "ms");
}

// With all four rings, of which the processor's and the temperature's change each second.
void measureMenu() {
  VirtualDesktopOptions options;
  options.tray = true;
  VirtualDesktop desktop(options);
  const SensorTree sensors(desktop.home() / "hwmon");
  ZephyxProcess program(desktop, {{"ZEPHYX_HWMON", sensors.folder()}});
  require(program.waitUntilReady() && waitFor([&] { return program.trayIcon().has_value(); }),
          "the program did not get ready:\n" + program.log());
  const auto icon = program.trayIcon().value();
  sensors.setProcessor("50000");
  desktop.input().click(icon.centerX(), icon.centerY());
  require(waitFor([&] { return program.menu().has_value(); }), "the menu did not open");
  pass(std::chrono::seconds(2));
  constexpr int seconds = 20;
  const double before = processorTime(program.pid());
  for (int second = 1; second <= seconds; ++second) {
    sensors.setProcessor(std::to_string(50 + second) + "000");
    pass(std::chrono::seconds(1));
  }
  report("menu.processor", (processorTime(program.pid()) - before) / seconds, "ms");
  require(program.menu().has_value(), "the menu closed");
}

void measureIdle() {
  VirtualDesktopOptions options;
  options.tray = true;
  VirtualDesktop desktop(options);
  const auto program = readyProgram(desktop);
  require(program->mainWindow().has_value(), "the main window is not shown");
  pass(std::chrono::seconds(3));
  report("idle.memory", kilobytes(program->pid(), "smaps_rollup", "Pss") / 1024, "MB");
  const double before = processorTime(program->pid());
  pass(std::chrono::seconds(60));
  report("idle.processor", processorTime(program->pid()) - before, "ms");
  require(program->mainWindow().has_value(), "the main window went away");
}

}  // namespace zephyx
