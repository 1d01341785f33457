#include "Platform/Linux/Engines/LinuxFlutterEngines.h"

#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>

#include "Platform/Dispatch.h"
#include "Platform/Linux/Engines/LinuxFlutterEngine.h"
#include "Platform/Linux/Engines/LinuxFlutterViewController.h"
#include "Platform/Linux/Windows/DesktopWatch.h"
#include "Platform/Pasteboard.h"

namespace zephyx {

LinuxFlutterEngines::LinuxFlutterEngines(Dispatch& dispatch, UserDefaults& userDefaults,
                                         Directories& directories, Pasteboard& pasteboard,
                                         Keychain& keychain, DesktopWatch& watch)
    : dispatch_(dispatch),
      userDefaults_(userDefaults),
      directories_(directories),
      pasteboard_(pasteboard),
      keychain_(keychain),
      qml_(std::make_unique<QQmlEngine>()) {
  qml_->rootContext()->setContextProperty(QStringLiteral("desktop"), &watch);
}

LinuxFlutterEngines::~LinuxFlutterEngines() = default;

std::shared_ptr<FlutterEngine> LinuxFlutterEngines::makeEngine(const std::string&) {
  return std::make_shared<LinuxFlutterEngine>(dispatch_, screenServices());
}

ScreenServices LinuxFlutterEngines::screenServices() {
  auto readClipboardText = [this](std::function<void(std::optional<std::string>)> answer) {
    dispatch_.globalQueue().async([contents = pasteboard_.contents(), answer = std::move(answer),
                                   &mainQueue = dispatch_.mainQueue()]() mutable {
      mainQueue.async([text = contents->string(pasteboardType::string),
                       answer = std::move(answer)]() mutable { answer(std::move(text)); });
    });
  };
  auto writeClipboardText = [this](const std::string& text) {
    pasteboard_.clearContents();
    pasteboard_.writeString(text);
  };
  return {.messenger = nullptr,
          .userDefaults = userDefaults_,
          .directories = directories_,
          .readClipboardText = std::move(readClipboardText),
          .writeClipboardText = std::move(writeClipboardText),
          .keychain = keychain_};
}

std::shared_ptr<FlutterViewController> LinuxFlutterEngines::makeViewController(
    std::shared_ptr<FlutterEngine> engine) {
  auto made = std::dynamic_pointer_cast<LinuxFlutterEngine>(std::move(engine));
  if (!made) return nullptr;
  return std::make_shared<LinuxFlutterViewController>(std::move(made), *qml_);
}

std::shared_ptr<FlutterViewController> LinuxFlutterEngines::makeViewControllerWithDefaultEngine() {
  auto engine = std::make_shared<LinuxFlutterEngine>(dispatch_, screenServices());
  engine->run("main");
  auto controller = std::make_shared<LinuxFlutterViewController>(std::move(engine), *qml_);
  // The first picture of the program: other threads read it while the host gets ready.
  controller->prepareView();
  return controller;
}

void LinuxFlutterEngines::registerPlugins(FlutterViewController&) {
  // A screen program finds what the plug-ins would give it in its `ScreenServices`.
}

}  // namespace zephyx
