#include "Platform/Linux/LinuxPlatform.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <utility>

#include "Platform/Linux/Alerts/LinuxAlerts.h"
#include "Platform/Linux/Audio/LinuxAudioHardware.h"
#include "Platform/Linux/Clipboard/FreedMemory.h"
#include "Platform/Linux/Clipboard/LinuxPasteboard.h"
#include "Platform/Linux/Displays/LinuxDisplays.h"
#include "Platform/Linux/Engines/LinuxFlutterEngines.h"
#include "Platform/Linux/Input/LinuxAccessibility.h"
#include "Platform/Linux/Input/LinuxEventMonitors.h"
#include "Platform/Linux/Input/LinuxEventPoster.h"
#include "Platform/Linux/Input/LinuxEventTaps.h"
#include "Platform/Linux/Input/LinuxHotKeys.h"
#include "Platform/Linux/Input/LinuxKeyboardLayout.h"
#include "Platform/Linux/Input/ToolkitEvents.h"
#include "Platform/Linux/Keychain/LinuxKeychain.h"
#include "Platform/Linux/LinuxApplication.h"
#include "Platform/Linux/LinuxDirectories.h"
#include "Platform/Linux/LinuxDispatch.h"
#include "Platform/Linux/LinuxSystemLog.h"
#include "Platform/Linux/LinuxUserDefaults.h"
#include "Platform/Linux/Menus/LinuxStatusItem.h"
#include "Platform/Linux/Network/LinuxUrlSession.h"
#include "Platform/Linux/Pictures/LinuxImages.h"
#include "Platform/Linux/Preview/LinuxPreviewPanel.h"
#include "Platform/Linux/SingleInstance.h"
#include "Platform/Linux/Statistics/LinuxHostStatistics.h"
#include "Platform/Linux/Statistics/LinuxTemperatureSensors.h"
#include "Platform/Linux/Toolkit.h"
#include "Platform/Linux/Updates/LinuxSoftwareUpdate.h"
#include "Platform/Linux/Views/LinuxTextMetrics.h"
#include "Platform/Linux/Windows/DesktopWatch.h"
#include "Platform/Linux/Windows/LinuxScreens.h"
#include "Platform/Linux/Windows/WindowHints.h"
#include "Platform/Linux/Workspace/ExternalPrograms.h"
#include "Platform/Linux/Workspace/LinuxWorkspace.h"
#include "Platform/LocalNotificationCenter.h"

namespace zephyx {
namespace {

constexpr double preparationDelay = 1;  // after the start, which it must not slow down

void sayThatThereIsNoDisplay() {
  const char* display = std::getenv("DISPLAY");
  std::fprintf(stderr, "zephyx: cannot reach an X11 display (DISPLAY is %s)\n",
               display && *display ? display : "not set");
  if (!DesktopWatch::waylandSession()) return;
  std::fputs(
      "zephyx: this is a Wayland session. Zephyx needs an X11 session: choose one (\"Xorg\") when "
      "you log in.\nWith XWayland it starts here too, but sees X11 programs only.\n",
      stderr);
}

/// Sessions start the installed program for everybody. What a user copies is recorded only after
/// that user has started it once.
bool isUnaskedLogIn(int argc, char** argv) {
  if (argc < 2 || std::string_view(argv[1]) != "--login") return false;
  const auto data = LinuxDirectories().applicationSupport();
  std::error_code none;
  return !data || !std::filesystem::exists(*data + "/com.zephyx.app", none);
}

}  // namespace

/// Destroyed from the last to the first.
struct LinuxPlatform::Services {
  Services(int argc, char** argv, std::unique_ptr<SingleInstance> claimedInstance,
           std::unique_ptr<DesktopWatch> openWatch)
      : instance(std::move(claimedInstance)), watch(std::move(openWatch)), toolkit(argc, argv) {
    watch->start();
    QObject::connect(watch.get(), &DesktopWatch::currentDesktopChanged, watch.get(),
                     [this] { workspaceCenter.post(notification::activeSpaceDidChange, nullptr); });
    dispatch.globalQueue().asyncAfter(preparationDelay, [this] { workspace.prepare(); });
    dispatch.mainQueue().asyncAfter(preparationDelay, [this] { audioHardware.connect(); });
  }
  // Work of the queues may be using any service.
  ~Services() { dispatch.finishWork(); }

  // A user without a home has no settings that last: a folder that others can write to is no place.
  std::string settingsFolder() const {
    return directories.configuration().value_or("") + "/com.zephyx.app";
  }

  std::string rampFile() const {
    return directories.runtime() ? instance->basePath() + ".ramps" : std::string();
  }

  LinuxSystemLog systemLog;
  LinuxDirectories directories;
  std::unique_ptr<SingleInstance> instance;
  std::unique_ptr<DesktopWatch> watch;
  Toolkit toolkit;
  LinuxDispatch dispatch;
  LocalNotificationCenter defaultCenter;
  LocalNotificationCenter workspaceCenter;
  LinuxUserDefaults userDefaults{settingsFolder(), systemLog};
  LinuxKeychain keychain;
  LinuxUrlSession urlSession;
  LinuxAudioHardware audioHardware{dispatch.mainQueue()};
  LinuxImages images;
  LinuxWorkspace workspace;
  LinuxPasteboard pasteboard{
      [this](int process) { return workspace.applicationForProcess(process); }};
  LinuxKeyboardLayout keyboardLayout;
  LinuxHotKeys hotKeys;
  LinuxEventPoster eventPoster{pasteboard, &hotKeys};
  LinuxAccessibility accessibility;
  LinuxHostStatistics hostStatistics;
  LinuxTemperatureSensors temperatureSensors;
  LinuxScreens screens{*watch};
  LinuxDisplays displays{toolkitConnection(), rampFile()};
  LinuxTextMetrics textMetrics;
  LinuxEventMonitors eventMonitors;
  LinuxEventTaps eventTaps;
  WindowHints windowHints{*watch};
  LinuxPreviewPanel previewPanel{dispatch, defaultCenter, windowHints, *watch};
  LinuxAlerts alerts{windowHints, *watch};
  LinuxStatusBar statusBar{*watch};
  LinuxFlutterEngines flutterEngines{dispatch,   userDefaults, directories,
                                     pasteboard, keychain,     *watch};
  LinuxApplication application{*watch, defaultCenter, *instance, windowHints};
  LinuxSoftwareUpdate softwareUpdate{UpdateConfiguration::ofBuild(),
                                     {.userDefaults = userDefaults,
                                      .dispatch = dispatch,
                                      .log = systemLog,
                                      .windowHints = windowHints,
                                      .isActive = [this] { return application.isActive(); },
                                      .open = openWithDesktop,
                                      .showInFolder = showInFileManager}};
};

LinuxPlatform::LinuxPlatform(int argc, char** argv, std::unique_ptr<SingleInstance> instance,
                             std::unique_ptr<DesktopWatch> watch)
    : services_(std::make_unique<Services>(argc, argv, std::move(instance), std::move(watch))) {}

LinuxPlatform::~LinuxPlatform() = default;

Accessibility& LinuxPlatform::accessibility() {
  return services_->accessibility;
}

Alerts& LinuxPlatform::alerts() {
  return services_->alerts;
}

Application& LinuxPlatform::application() {
  return services_->application;
}

AudioHardware& LinuxPlatform::audioHardware() {
  return services_->audioHardware;
}

Directories& LinuxPlatform::directories() {
  return services_->directories;
}

Dispatch& LinuxPlatform::dispatch() {
  return services_->dispatch;
}

Displays& LinuxPlatform::displays() {
  return services_->displays;
}

EventMonitors& LinuxPlatform::eventMonitors() {
  return services_->eventMonitors;
}

EventPoster& LinuxPlatform::eventPoster() {
  return services_->eventPoster;
}

EventTaps& LinuxPlatform::eventTaps() {
  return services_->eventTaps;
}

FlutterEngines& LinuxPlatform::flutterEngines() {
  return services_->flutterEngines;
}

HostStatistics& LinuxPlatform::hostStatistics() {
  return services_->hostStatistics;
}

HotKeys& LinuxPlatform::hotKeys() {
  return services_->hotKeys;
}

Images& LinuxPlatform::images() {
  return services_->images;
}

KeyboardLayout& LinuxPlatform::keyboardLayout() {
  return services_->keyboardLayout;
}

Keychain& LinuxPlatform::keychain() {
  return services_->keychain;
}

NotificationCenter& LinuxPlatform::defaultNotificationCenter() {
  return services_->defaultCenter;
}

NotificationCenter& LinuxPlatform::workspaceNotificationCenter() {
  return services_->workspaceCenter;
}

Pasteboard& LinuxPlatform::pasteboard() {
  return services_->pasteboard;
}

PreviewPanel& LinuxPlatform::previewPanel() {
  return services_->previewPanel;
}

Screens& LinuxPlatform::screens() {
  return services_->screens;
}

SoftwareUpdate& LinuxPlatform::softwareUpdate() {
  return services_->softwareUpdate;
}

StatusBar& LinuxPlatform::statusBar() {
  return services_->statusBar;
}

SystemLog& LinuxPlatform::systemLog() {
  return services_->systemLog;
}

TemperatureSensors& LinuxPlatform::temperatureSensors() {
  return services_->temperatureSensors;
}

TextMetrics& LinuxPlatform::textMetrics() {
  return services_->textMetrics;
}

UrlSession& LinuxPlatform::urlSession() {
  return services_->urlSession;
}

UserDefaults& LinuxPlatform::userDefaults() {
  return services_->userDefaults;
}

Workspace& LinuxPlatform::workspace() {
  return services_->workspace;
}

std::unique_ptr<Platform> makePlatform(int argc, char** argv) {
  if (isUnaskedLogIn(argc, argv)) return nullptr;
  FreedMemory::keep();
  auto watch = DesktopWatch::open();
  if (!watch) {
    // The toolkit would abort here. There is nobody yet whose objects could be left behind.
    sayThatThereIsNoDisplay();
    std::exit(EXIT_FAILURE);
  }
  const auto folder = LinuxDirectories().runtime();
  const char* display = std::getenv("DISPLAY");
  auto instance = std::make_unique<SingleInstance>(folder.value_or(""), display ? display : "");
  // Without a folder of the user alone there is no place in which starts could meet.
  if (folder && instance->claim() == SingleInstance::Outcome::second) return nullptr;
  return std::make_unique<LinuxPlatform>(argc, argv, std::move(instance), std::move(watch));
}

}  // namespace zephyx
