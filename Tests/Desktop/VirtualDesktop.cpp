#include "Tests/Desktop/VirtualDesktop.h"

#include <fcntl.h>
#include <stdlib.h>

#include <stdexcept>

#include "Platform/Linux/FileDescriptor.h"

namespace zephyx {
namespace {

constexpr std::chrono::seconds kStartDeadline(20);

/// A card without hardware. The key bindings of a server that owns the machine are off.
constexpr const char* xorgConfiguration = R"(
Section "ServerFlags"
  Option "AutoAddDevices" "false"
  Option "AutoEnableDevices" "false"
  Option "DontVTSwitch" "true"
EndSection
Section "Device"
  Identifier "card"
  Driver "dummy"
  VideoRam 256000
EndSection
Section "Monitor"
  Identifier "monitor"
  HorizSync 5.0-1000.0
  VertRefresh 5.0-200.0
EndSection
Section "Screen"
  Identifier "screen"
  Device "card"
  Monitor "monitor"
  DefaultDepth 24
  SubSection "Display"
    Depth 24
    Modes "1280x800"
    Virtual 2560 1600
  EndSubSection
EndSection
)";

void require(bool condition, const std::string& what) {
  if (!condition) throw std::runtime_error(what);
}

Environment desktopEnvironment(const std::filesystem::path& home) {
  Environment result = currentEnvironment();
  for (const char* name : {"WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "XAUTHORITY", "SESSION_MANAGER",
                           "QT_QPA_PLATFORM", "QT_SCALE_FACTOR", "QT_STYLE_OVERRIDE", "GTK_MODULES",
                           "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION"})
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
  startServer(options);
  windows_ = std::make_unique<DesktopWindows>(display_);
  input_ = std::make_unique<DesktopInput>(display_);
  if (options.sessionBus) startSessionBus();
  if (options.windowManager) startWindowManager();
  if (options.compositor) startCompositor();
  if (options.tray) startTray();
}

std::string VirtualDesktop::firstLine(const std::vector<std::string>& arguments,
                                      ChildProcess& program) const {
  const auto answer = directory_.path() / arguments.front();
  const FileDescriptor output(open(answer.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
  ChildProcessOptions options;
  options.arguments = arguments;
  options.environment = environment_;
  options.outputDescriptor = output.get();
  program = ChildProcess(options);
  std::string text;
  (void)waitFor(
      [&] { return (text = readFile(answer)).find('\n') != text.npos || !program.isRunning(); },
      kStartDeadline, std::chrono::milliseconds(1));
  require(text.find('\n') != text.npos, arguments.front() + " did not start");
  return text.substr(0, text.find('\n'));
}

void VirtualDesktop::startServerWithOutputs() {
  const auto configuration = directory_.path() / "xorg.conf";
  writeFile(configuration, xorgConfiguration);
  display_ = ":" + firstLine({"Xorg", "-displayfd", "1", "-config", configuration.string(),
                              "-logfile", (directory_.path() / "xorg.log").string(), "-novtswitch",
                              "-sharevts", "-nolisten", "tcp", "-ac", "-noreset"},
                             server_);
  environment_["DISPLAY"] = display_;
  // Without a real keyboard this server's keys have other numbers than those of a PC's.
  const std::vector<std::string> numbers{"setxkbmap", "-rules",  "evdev", "-model",
                                         "pc105",     "-layout", "us"};
  require(run(numbers).status == 0, "no keyboard");
}

void VirtualDesktop::startServer(const VirtualDesktopOptions& options) {
  const auto size = std::to_string(options.width) + "x" + std::to_string(options.height) + "x24";
  std::vector<std::string> arguments{"Xvfb",      "-displayfd", "1",     "-screen",    "0",
                                     size,        "+extension", "RANDR", "+extension", "Composite",
                                     "-nolisten", "tcp",        "-ac",   "-noreset"};
  arguments.insert(arguments.end(), options.serverArguments.begin(), options.serverArguments.end());
  if (options.outputs) {
    startServerWithOutputs();
  } else {
    display_ = ":" + firstLine(arguments, server_);
  }
  environment_["DISPLAY"] = display_;
}

void VirtualDesktop::startSessionBus() {
  environment_["DBUS_SESSION_BUS_ADDRESS"] =
      firstLine({"dbus-daemon", "--session", "--nofork", "--nopidfile", "--nosyslog",
                 "--print-address", "--address=unix:path=" + (directory_.path() / "bus").string()},
                sessionBus_);
}

void VirtualDesktop::startWindowManager() {
  // The last words of one before about the windows would pass for its first.
  for (const auto* word :
       {"_NET_SUPPORTING_WM_CHECK", "_NET_WORKAREA", "_NET_CLIENT_LIST", "_NET_ACTIVE_WINDOW"})
    if (windows_->hasProperty(windows_->root(), word)) run({"xprop", "-root", "-remove", word});
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

void VirtualDesktop::stopSessionBus() {
  sessionBus_.kill();
  std::filesystem::remove(directory_.path() / "dbus-daemon");  // the last one's first line
}

void VirtualDesktop::startKeyring() {
  // Before anything else asks for the service, or the bus starts a locked one.
  keyring_ =
      start({"sh", "-c",
             "printf word | exec gnome-keyring-daemon --foreground --unlock --components=secrets"});
  require(
      waitFor(
          [&] {
            return run({"dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus",
                        "/", "org.freedesktop.DBus.NameHasOwner", "string:org.freedesktop.secrets"})
                       .output.find("true") != std::string::npos;
          },
          kStartDeadline),
      "the keyring did not start");
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

void VirtualDesktop::screenshot(const std::filesystem::path& path, const std::string& part) const {
  std::filesystem::create_directories(path.parent_path());
  std::vector<std::string> arguments{"import", "-window", "root"};
  if (!part.empty()) arguments.insert(arguments.end(), {"-crop", part, "+repage"});
  arguments.push_back(path.string());
  require(run(arguments).status == 0, "no screenshot taken");
}

}  // namespace zephyx
