#include "Benchmarks/Measuring.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "Platform/Linux/X11.h"

namespace zephyx {

double since(Clock::time_point start, Clock::time_point end) {
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

double kilobytes(pid_t pid, const std::string& file, const std::string& key) {
  std::ifstream lines("/proc/" + std::to_string(pid) + "/" + file);
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with(key + ":")) return std::stod(line.substr(key.size() + 1));
  throw std::runtime_error("no " + key + " in " + file);
}

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

}  // namespace zephyx
