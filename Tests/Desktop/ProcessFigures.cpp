#include "Tests/Desktop/ProcessFigures.h"

#include <xcb/res.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include "Platform/Linux/X11.h"

namespace zephyx {
namespace {

namespace fs = std::filesystem;

double entriesOf(const fs::path& folder) {
  std::error_code gone;
  return static_cast<double>(
      std::distance(fs::directory_iterator(folder, gone), fs::directory_iterator()));
}

double filesBelow(const fs::path& folder) {
  double files = 0;
  std::error_code gone;
  for (const auto& entry : fs::recursive_directory_iterator(folder, gone))
    files += entry.is_regular_file(gone);
  return files;
}

double statusValue(pid_t pid, const std::string& key) {
  std::ifstream lines("/proc/" + std::to_string(pid) + "/status");
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with(key + ":")) return std::stod(line.substr(key.size() + 1));
  return 0;
}

/// Sum over the threads of a number in a file of each.
template <typename Read>
double overThreads(pid_t pid, Read read) {
  double sum = 0;
  std::error_code gone;
  for (const auto& task : fs::directory_iterator("/proc/" + std::to_string(pid) + "/task", gone))
    sum += read(task.path());
  return sum;
}

double children(pid_t pid) {
  return overThreads(pid, [](const fs::path& task) {
    std::istringstream numbers(readFile(task / "children"));
    return static_cast<double>(
        std::distance(std::istream_iterator<int>(numbers), std::istream_iterator<int>()));
  });
}

double processorMilliseconds(pid_t pid) {
  return overThreads(pid, [](const fs::path& task) {
    std::istringstream line(readFile(task / "schedstat"));
    double nanoseconds = 0;
    line >> nanoseconds;
    return nanoseconds / 1e6;
  });
}

struct ServerResources {
  double connections = 0, resources = 0, pixmapMegabytes = 0;
};

ServerResources resourcesOf(pid_t pid) {
  X11Connection connection;
  auto* c = connection.get();
  ServerResources sum;
  const XReply<xcb_res_query_clients_reply_t> clients(
      xcb_res_query_clients_reply(c, xcb_res_query_clients(c), nullptr));
  for (auto client = xcb_res_query_clients_clients_iterator(clients.get()); client.rem;
       xcb_res_client_next(&client)) {
    const auto base = client.data->resource_base;
    if (connection.processOfWindow(base) != pid) continue;
    ++sum.connections;
    const XReply<xcb_res_query_client_resources_reply_t> types(
        xcb_res_query_client_resources_reply(c, xcb_res_query_client_resources(c, base), nullptr));
    for (auto type = xcb_res_query_client_resources_types_iterator(types.get()); type.rem;
         xcb_res_type_next(&type))
      sum.resources += type.data->count;
    const XReply<xcb_res_query_client_pixmap_bytes_reply_t> bytes(
        xcb_res_query_client_pixmap_bytes_reply(c, xcb_res_query_client_pixmap_bytes(c, base),
                                                nullptr));
    sum.pixmapMegabytes += bytes->bytes / 1e6;
  }
  return sum;
}

/// Of every connection of the process to the session bus.
double matchRules(const VirtualDesktop& desktop, pid_t pid) {
  const auto call = [&](const std::string& interface, const std::string& method,
                        const std::vector<std::string>& arguments) {
    std::vector<std::string> command{"dbus-send",
                                     "--session",
                                     "--print-reply",
                                     "--dest=org.freedesktop.DBus",
                                     "/org/freedesktop/DBus",
                                     interface + "." + method};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return desktop.run(command).output;
  };
  double rules = 0;
  std::istringstream names(call("org.freedesktop.DBus", "ListNames", {}));
  for (std::string line; std::getline(names, line);) {
    const auto start = line.find("\":");
    if (start == std::string::npos) continue;
    const auto name = line.substr(start + 1, line.rfind('"') - start - 1);
    const auto owner =
        call("org.freedesktop.DBus", "GetConnectionUnixProcessID", {"string:" + name});
    if (!owner.ends_with("uint32 " + std::to_string(pid) + "\n")) continue;
    const auto stats =
        call("org.freedesktop.DBus.Debug.Stats", "GetConnectionStats", {"string:" + name});
    const auto at = stats.find("uint32", stats.find("\"MatchRules\""));
    if (at != std::string::npos) rules += std::stod(stats.substr(at + 6));
  }
  return rules;
}

}  // namespace

ProcessFigures ProcessFigures::of(const VirtualDesktop& desktop, pid_t pid,
                                  const std::filesystem::path& folder) {
  const fs::path process = "/proc/" + std::to_string(pid);
  const auto before = processorMilliseconds(pid);
  pass(std::chrono::seconds(1));
  const auto quiet = processorMilliseconds(pid) - before;
  const auto server = resourcesOf(pid);
  return {{{"memory of its own, MB", statusValue(pid, "RssAnon") / 1024, 6},
           // Threads of a pool come and go, each with a descriptor.
           {"file descriptors", entriesOf(process / "fd"), 3},
           {"threads", entriesOf(process / "task"), 3},
           {"child processes", children(pid), 0},
           {"X connections", server.connections, 0},
           {"X resources", server.resources, 12},
           {"X pixmaps, MB", server.pixmapMegabytes, 4},
           {"rules on the session bus", matchRules(desktop, pid), 0},
           {"files", filesBelow(folder), 0},
           {"processor in a quiet second, ms", quiet, 10}}};
}

bool ProcessFigures::hasGrownSince(const ProcessFigures& before) const {
  return !std::equal(figures.begin(), figures.end(), before.figures.begin(), before.figures.end(),
                     [](const Figure& now, const Figure& then) {
                       return now.value <= then.value + then.tolerance;
                     });
}

}  // namespace zephyx
