// Measures the whole program from outside, on a private desktop: prints "name value unit" lines.
// `program_measurements start` measures one group only: start, first, copies,
// translate, menu or idle.
#include <unistd.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <future>
#include <iostream>
#include <map>
#include <sstream>

#include "Platform/Linux/X11.h"
#include "Tests/Desktop/ChatServer.h"
#include "Tests/Desktop/ClipboardProgram.h"
#include "Tests/Desktop/TargetProgram.h"
#include "Tests/Desktop/ZephyxProcess.h"
#include "Tests/Linux/SensorTree.h"

namespace zephyx {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

double since(Clock::time_point start, Clock::time_point end = Clock::now()) {
  return std::chrono::duration<double, std::milli>(end - start).count();
}

void report(const std::string& name, double value, const std::string& unit) {
  std::printf("%s %.2f %s\n", name.c_str(), value, unit.c_str());
  std::fflush(stdout);
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values.at(values.size() / 2);
}

void require(bool condition, const std::string& what) {
  if (!condition) throw std::runtime_error(what);
}

// A value in kilobytes of one of the process's status files.
double kilobytes(pid_t pid, const std::string& file, const std::string& key) {
  std::ifstream lines("/proc/" + std::to_string(pid) + "/" + file);
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with(key + ":")) return std::stod(line.substr(key.size() + 1));
  throw std::runtime_error("no " + key + " in " + file);
}

// Processor time of all threads in milliseconds; finer than the clock ticks of /proc/PID/stat.
double processorTime(pid_t pid) {
  double nanoseconds = 0;
  for (const auto& task :
       std::filesystem::directory_iterator("/proc/" + std::to_string(pid) + "/task")) {
    std::istringstream line(readFile(task.path() / "schedstat"));
    double value = 0;
    if (line >> value) nanoseconds += value;
  }
  return nanoseconds / 1e6;
}

std::unique_ptr<ZephyxProcess> readyProgram(VirtualDesktop& desktop) {
  auto program = std::make_unique<ZephyxProcess>(desktop);
  require(program->waitUntilReady(), "the program did not get ready:\n" + program->log());
  return program;
}

void measureStart() {
  std::map<std::string, std::vector<double>> moments;
  for (int round = 0; round < 7; ++round) {
    VirtualDesktopOptions options;
    options.tray = true;
    VirtualDesktop desktop(options);
    const auto start = Clock::now();
    ZephyxProcess program(desktop);
    std::map<std::string, std::function<bool()>> conditions{
        {"hotkey", [&] { return desktop.windows().isGrabbedByOthers(key::V, 0x41); }},
        {"capture", [&] { return program.logCount("[Clipboard] initialize() done") > 0; }},
        {"tray", [&] { return program.trayIcon().has_value(); }},
        {"window",
         [&] {
           const auto window = program.mainWindow();
           return window && desktop.windows().distinctColors(*window) > 4;
         }},
    };
    double all = 0;
    while (!conditions.empty() && since(start) < 10'000) {
      std::erase_if(conditions, [&](auto& condition) {
        if (!condition.second()) return false;
        all = since(start);
        moments[condition.first].push_back(all);
        return true;
      });
      pass(milliseconds(1));
    }
    require(conditions.empty(), "not ready: " + program.log());
    moments["all"].push_back(all);
  }
  for (const auto& [name, values] : moments) report("start." + name, median(values), "ms");
}

void measureFirstCopy() {
  std::vector<double> times;
  for (int round = 0; round < 5; ++round) {
    VirtualDesktop desktop;
    desktop.enter();
    ClipboardProgram owner;
    const auto start = Clock::now();
    ZephyxProcess program(desktop);
    for (int copy = 0; program.history().count() == 0 && since(start) < 10'000; ++copy) {
      owner.copyText("copy " + std::to_string(copy));
      pass(milliseconds(2));
    }
    times.push_back(since(start));
  }
  report("start.first_copy", median(times), "ms");
}

void measureLatency(ZephyxProcess& program) {
  ClipboardProgram owner;
  std::vector<double> times;
  for (int round = 0; round < 200; ++round) {
    const auto before = program.history().lastId();
    const auto start = owner.copyText("measured copy " + std::to_string(round));
    // Looking without a pause would take one of the processors from the programs that are measured.
    while (program.history().lastId() == before && since(start) < 2'000) {
      pass(std::chrono::microseconds(200));
    }
    times.push_back(since(start));
    pass(milliseconds(20));
  }
  report("copy.text", median(times), "ms");
  std::sort(times.begin(), times.end());
  report("copy.text.p99", times[times.size() * 99 / 100], "ms");
}

// How many of 200 different texts, copied at this distance, are recorded, in their order.
double recordedRow(ZephyxProcess& program, milliseconds distance) {
  ClipboardProgram owner;
  const auto before = program.history().lastId();
  std::map<std::string, int> places;
  auto next = Clock::now();
  for (int index = 0; index < 200; ++index) {
    const std::string text = "row of copies, " + std::to_string(index);
    places[text] = index;
    owner.copyText(text);
    next += distance;
    const auto rest = std::chrono::duration_cast<std::chrono::microseconds>(next - Clock::now());
    if (rest.count() > 0) pass(rest);
  }
  (void)waitFor([&] { return program.history().lastId() >= before + 200; }, milliseconds(2000));
  int recorded = 0, last = -1;
  for (const auto& row : program.history().rows()) {
    const auto place = places.find(row.text);
    if (row.id <= before || place == places.end() || place->second <= last) continue;
    last = place->second;
    ++recorded;
  }
  return recorded;
}

void measureRow(ZephyxProcess& program, milliseconds distance) {
  std::vector<double> counts;
  for (int round = 0; round < 3; ++round) counts.push_back(recordedRow(program, distance));
  report("copy.row." + std::to_string(distance.count()) + "ms", median(counts), "of_200");
}

// The moment of the next copy, as any program could find out while the copying one is still at
// work.
std::future<Clock::time_point> nextCopy() {
  auto connection = std::make_shared<X11Connection>();
  auto* server = connection->get();
  const auto firstEvent = xcb_get_extension_data(server, &xcb_xfixes_id)->first_event;
  xcb_xfixes_query_version(server, 5, 0);
  xcb_xfixes_select_selection_input(server, connection->root(), connection->atom("CLIPBOARD"),
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
  connection->atomName(XCB_ATOM_STRING);  // a round trip: the server knows
  return std::async(std::launch::async, [connection, firstEvent] {
    while (const XReply<xcb_generic_event_t> event{xcb_wait_for_event(connection->get())})
      if ((event->response_type & 0x7f) == firstEvent) return Clock::now();
    throw std::runtime_error("the X server went away");
  });
}

void measureLongText(VirtualDesktop& desktop, ZephyxProcess& program) {
  const std::string pid = std::to_string(program.pid());
  std::vector<double> times, peaks;
  for (int round = 0; round < 5; ++round) {
    const std::string text(20'000'000, static_cast<char>('a' + round));
    auto announced = nextCopy();
    const auto before = program.history().lastId();
    writeFile("/proc/" + pid + "/clear_refs", "5");  // the peak counts from here
    const double idle = kilobytes(program.pid(), "status", "VmRSS");
    desktop.copy(text);
    const auto start = announced.get();
    require(waitFor([&] { return program.history().lastId() != before; }, milliseconds(10'000),
                    milliseconds(1)),
            "the long text was not recorded");
    times.push_back(since(start));
    peaks.push_back((kilobytes(program.pid(), "status", "VmHWM") - idle) / 1024);
  }
  report("copy.text20MB", median(times), "ms");
  report("copy.text20MB.memory", *std::max_element(peaks.begin(), peaks.end()), "MB");
}

std::size_t fileCount(const std::filesystem::path& folder, const std::string& ending) {
  std::size_t count = 0;
  std::error_code none;
  for (const auto& file : std::filesystem::directory_iterator(folder, none))
    if (file.path().string().ends_with(ending)) ++count;
  return count;
}

void measureImage(VirtualDesktop& desktop, ZephyxProcess& program) {
  std::vector<double> times;
  for (int round = 0; round < 5; ++round) {
    const auto picture = desktop.home() / "picture.png";
    // 8 bits a channel, as screens and cameras give.
    desktop.run({"convert", "-seed", std::to_string(round), "-depth", "8", "-size", "4000x1000",
                 "plasma:", picture.string()});
    const auto blobs = program.dataFolder() / "clipboard_blobs";
    const auto thumbnails = program.dataFolder() / "clipboard_thumbs";
    const auto before = fileCount(blobs, ".png") + fileCount(thumbnails, "_thumb.png");
    const std::string bytes = readFile(picture);
    auto announced = nextCopy();
    desktop.copy(bytes, "image/png");
    const auto start = announced.get();
    require(waitFor(
                [&] {
                  return fileCount(blobs, ".png") + fileCount(thumbnails, "_thumb.png") ==
                         before + 2;
                },
                milliseconds(10'000), milliseconds(1)),
            "the image was not stored");
    times.push_back(since(start));
  }
  report("copy.image4000x1000", median(times), "ms");
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

void measureCopies() {
  VirtualDesktop desktop;
  desktop.enter();
  const auto program = readyProgram(desktop);
  measureLatency(*program);
  measureRow(*program, milliseconds(20));
  measureRow(*program, milliseconds(5));
  measureLongText(desktop, *program);
  measureImage(desktop, *program);
}

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

int measure(const std::string& group) {
  const std::pair<const char*, void (*)()> groups[] = {
      {"start", &measureStart},           {"first", &measureFirstCopy}, {"copies", &measureCopies},
      {"translate", &measureTranslation}, {"menu", &measureMenu},       {"idle", &measureIdle}};
  for (const auto& [name, function] : groups)
    if (group.empty() || group == name) function();
  return 0;
}

}  // namespace
}  // namespace zephyx

int main(int argc, char** argv) {
  try {
    return zephyx::measure(argc > 1 ? argv[1] : "");
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
