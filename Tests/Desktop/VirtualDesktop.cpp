#include "Tests/Desktop/VirtualDesktop.h"

#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <stdexcept>

namespace zephyx {
namespace {

constexpr std::chrono::seconds kStartDeadline(20);

void require(bool condition, const std::string& what) {
  if (!condition) throw std::runtime_error(what);
}

// A child that tells one line through a descriptor of its own, once it is ready.
class ReadinessPipe {
 public:
  ReadinessPipe() { require(pipe(ends_) == 0, "pipe failed"); }
  ReadinessPipe(const ReadinessPipe&) = delete;
  ReadinessPipe& operator=(const ReadinessPipe&) = delete;
  ~ReadinessPipe() {
    close(ends_[0]);
    closeWriteEnd();
  }
  int writeEnd() const { return ends_[1]; }
  void closeWriteEnd() {
    if (ends_[1] >= 0) close(ends_[1]);
    ends_[1] = -1;
  }
  std::string line() const {
    std::string result;
    char character = 0;
    pollfd readable{ends_[0], POLLIN, 0};
    while (poll(&readable, 1, 20'000) > 0 && read(ends_[0], &character, 1) == 1 &&
           character != '\n')
      result += character;
    return result;
  }

 private:
  int ends_[2];
};

Environment desktopEnvironment(const std::filesystem::path& home) {
  Environment result = currentEnvironment();
  for (const char* name :
       {"WAYLAND_DISPLAY", "XAUTHORITY", "SESSION_MANAGER", "QT_QPA_PLATFORM", "QT_SCALE_FACTOR",
        "QT_STYLE_OVERRIDE", "GTK_MODULES", "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION"})
    result.erase(name);
  const std::pair<const char*, std::filesystem::path> directories[] = {
      {"HOME", home},
      {"XDG_DATA_HOME", home / ".local/share"},
      {"XDG_CONFIG_HOME", home / ".config"},
      {"XDG_CACHE_HOME", home / ".cache"},
      {"XDG_STATE_HOME", home / ".local/state"},
      {"XDG_RUNTIME_DIR", home / "run"}};
  for (const auto& [name, path] : directories) {
    std::filesystem::create_directories(path);
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    result[name] = path.string();
  }
  result["LANG"] = result["LC_ALL"] = "C.UTF-8";
  // An address that no library understands: programs neither find nor start a bus.
  result["DBUS_SESSION_BUS_ADDRESS"] = "disabled:";
  result["NO_AT_BRIDGE"] = "1";
  result["GTK_A11Y"] = "none";
  result["GIO_USE_VFS"] = "local";
  result["GSETTINGS_BACKEND"] = "memory";
  return result;
}

}  // namespace

VirtualDesktop::VirtualDesktop(const VirtualDesktopOptions& options)
    : home_(directory_.path() / "home"),
      width_(options.width),
      height_(options.height),
      environment_(desktopEnvironment(home_)) {
  startServer();
  windows_ = std::make_unique<DesktopWindows>(display_);
  input_ = std::make_unique<DesktopInput>(display_);
  if (options.sessionBus) startSessionBus();
  if (options.windowManager) startWindowManager();
  if (options.compositor) startCompositor();
  if (options.tray) startTray();
}

void VirtualDesktop::startServer() {
  ReadinessPipe number;
  ChildProcessOptions server;
  server.arguments = {
      "Xvfb",       "-displayfd", std::to_string(number.writeEnd()),
      "-screen",    "0",          std::to_string(width_) + "x" + std::to_string(height_) + "x24",
      "+extension", "RANDR",      "+extension",
      "Composite",  "-nolisten",  "tcp",
      "-ac",        "-noreset"};
  server.environment = environment_;
  server.inheritedDescriptor = number.writeEnd();
  server_ = ChildProcess(server);
  number.closeWriteEnd();
  const std::string line = number.line();
  require(!line.empty(), "the X server did not start");
  display_ = ":" + line;
  environment_["DISPLAY"] = display_;
}

void VirtualDesktop::startSessionBus() {
  ReadinessPipe address;
  ChildProcessOptions bus;
  bus.arguments = {"dbus-daemon", "--session",
                   "--nofork",    "--nopidfile",
                   "--nosyslog",  "--print-address=" + std::to_string(address.writeEnd())};
  bus.environment = environment_;
  bus.inheritedDescriptor = address.writeEnd();
  sessionBus_ = ChildProcess(bus);
  address.closeWriteEnd();
  environment_["DBUS_SESSION_BUS_ADDRESS"] = address.line();
  require(!environment_["DBUS_SESSION_BUS_ADDRESS"].empty(), "the session bus did not start");
}

void VirtualDesktop::startWindowManager() {
  windowManager_ = start({"openbox", "--sm-disable"});
  require(waitFor(
              [&] {
                return windows_->hasProperty(windows_->root(), "_NET_SUPPORTING_WM_CHECK") &&
                       windows_->hasProperty(windows_->root(), "_NET_WORKAREA");
              },
              kStartDeadline),
          "the window manager did not start");
}

void VirtualDesktop::startCompositor() {
  compositor_ = start({"picom", "--backend", "xrender", "--config", "/dev/null"});
  require(waitFor([&] { return windows_->selectionOwner("_NET_WM_CM_S0") != 0; }, kStartDeadline),
          "the compositor did not start");
}

void VirtualDesktop::startTray() {
  tray_ = start(
      {"trayer", "--edge", "top", "--align", "right", "--widthtype", "request", "--height", "26"});
  require(
      waitFor([&] { return windows_->selectionOwner("_NET_SYSTEM_TRAY_S0") != 0; }, kStartDeadline),
      "the tray did not start");
}

void VirtualDesktop::stopTray() {
  tray_.terminate();
}

void VirtualDesktop::enter() const {
  for (const auto& [name, value] : currentEnvironment())
    if (!environment_.count(name)) unsetenv(name.c_str());
  for (const auto& [name, value] : environment_) setenv(name.c_str(), value.c_str(), 1);
}

ChildProcess VirtualDesktop::start(const std::vector<std::string>& arguments,
                                   const Environment& additions,
                                   const std::filesystem::path& output) const {
  ChildProcessOptions options;
  options.arguments = arguments;
  options.environment = environment_;
  for (const auto& [name, value] : additions) options.environment[name] = value;
  options.output = output;
  return ChildProcess(options);
}

CommandResult VirtualDesktop::run(const std::vector<std::string>& arguments,
                                  const std::string& input) const {
  return runCommand(arguments, environment_, input);
}

void VirtualDesktop::copy(const std::string& bytes, const std::string& target) const {
  require(run({"xclip", "-selection", "clipboard", "-target", target, "-in"}, bytes).status == 0,
          "xclip could not copy");
}

std::string VirtualDesktop::pasted(const std::string& target, const std::string& selection) const {
  return run({"xclip", "-selection", selection, "-target", target, "-out"}).output;
}

void VirtualDesktop::splitIntoTwoMonitors() const {
  const int half = width_ / 2;
  const auto geometry = [&](int x) {
    return std::to_string(half) + "/300x" + std::to_string(height_) + "/190+" + std::to_string(x) +
           "+0";
  };
  require(run({"xrandr", "--setmonitor", "LEFT", geometry(0), "screen"}).status == 0 &&
              run({"xrandr", "--setmonitor", "RIGHT", geometry(half), "none"}).status == 0,
          "xrandr could not split the screen");
}

void VirtualDesktop::screenshot(const std::filesystem::path& path) const {
  std::filesystem::create_directories(path.parent_path());
  require(run({"import", "-window", "root", path.string()}).status == 0, "no screenshot taken");
}

}  // namespace zephyx
