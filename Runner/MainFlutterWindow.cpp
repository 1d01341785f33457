#include "Runner/MainFlutterWindow.h"

#include <string_view>
#include <utility>

#include "Platform/Application.h"
#include "Platform/Dispatch.h"
#include "Platform/Events.h"
#include "Platform/FlutterEngine.h"
#include "Platform/NotificationCenter.h"
#include "Platform/Platform.h"
#include "Platform/SystemLog.h"
#include "Platform/Workspace.h"
#include "Runner/AppDelegate.h"
#include "Runner/Arguments.h"
#include "Runner/ClipboardPanelController.h"
#include "Runner/HotkeyManager.h"
#include "Runner/MenuChannel.h"
#include "Runner/TelemetryRelay.h"
#include "Runner/TranslatePanelController.h"
#include "Runner/TranslationRelay.h"
#include "Runner/UpdateChannelHandlers.h"
#include "Runner/Url.h"

namespace zephyx {
namespace {

constexpr Rect initialFrame{{160, 120}, {1100, 760}};
constexpr Size minimumSize{900, 600};
constexpr double filePanelPollInterval = 0.3;
constexpr const char* generationFailed = "Translation failed. Try again.";

namespace method {
constexpr std::string_view translateToken = "headlessTranslateToken";
constexpr std::string_view translateDone = "headlessTranslateDone";
constexpr std::string_view translateError = "headlessTranslateError";
constexpr std::string_view showEditorText = "headlessShowEditorText";
constexpr std::string_view dismissPanel = "headlessDismissPanel";
constexpr std::string_view quit = "quit";
constexpr std::string_view openUrl = "openUrl";
}  // namespace method

WindowConfiguration interfaceFileWindow() {
  return {.kind = WindowKind::window,
          .contentRect = initialFrame,
          .title = "Zephyx",
          .styleMask = styleMask::titled | styleMask::closable | styleMask::miniaturizable |
                       styleMask::resizable};
}

}  // namespace

MainFlutterWindow::MainFlutterWindow(Platform& platform, AppDelegate& delegate)
    : platform_(platform),
      delegate_(delegate),
      application_(platform.application()),
      window_(application_.makeWindow(interfaceFileWindow())),
      hotkeyHandlers_(platform),
      agentVisibilityHandlers_(platform.userDefaults()) {}

MainFlutterWindow::~MainFlutterWindow() {
  if (!methodChannel_) return;
  // An engine ends in this order: handlers off, its view out of the window, shut down, released.
  methodChannel_->setMethodCallHandler(nullptr);
  window_->setContentViewController(nullptr);
  viewController_->engine()->shutDown();
}

void MainFlutterWindow::awakeFromNib() {
  viewController_ = platform_.flutterEngines().makeViewControllerWithDefaultEngine();
  const auto frame = window_->frame();
  window_->setContentViewController(viewController_);
  window_->setFrame(frame);

  window_->configure([](WindowConfiguration& c) {
    c.styleMask |= styleMask::fullSizeContentView;
    c.titlebarAppearsTransparent = true;
    c.titleHidden = true;
    c.standardButtonsHidden = true;
    c.minimumSize = minimumSize;
    c.level = windowLevel::status;
    c.collectionBehavior = mainWindowCollectionBehavior;
    c.movableByWindowBackground = true;
  });

  // The system posts space changes on the workspace's own centre, so the last of these stays
  // silent; hiding on a change of space rests on the key monitor.
  auto& center = platform_.defaultNotificationCenter();
  const auto* object = window_->notificationObject();
  resignKeyObserver_ =
      center.addObserver(notification::windowDidResignKey, object, lifetime_.wrap([this] {
        // Only then is it known which window has the keyboard instead.
        platform_.dispatch().mainQueue().async(lifetime_.wrap([this] { didLoseKeyboard(); }));
      }));
  becomeKeyObserver_ =
      center.addObserver(notification::windowDidBecomeKey, object, lifetime_.wrap([this] {
        window_->configure([](WindowConfiguration& c) { c.level = windowLevel::status; });
      }));
  spaceObserver_ = center.addObserver(notification::activeSpaceDidChange, nullptr,
                                      lifetime_.wrap([this] { window_->orderOut(); }));
  setupGestureTracking();

  methodChannel_ =
      makeMenuChannel(viewController_->engine()->binaryMessenger(), platform_.systemLog());
  delegate_.methodChannel = methodChannel_;
  TranslationRelay::shared().notesChannel = methodChannel_;
  TelemetryRelay::shared().notesChannel = methodChannel_;
  methodChannel_->setMethodCallHandler(lifetime_.wrap(
      [this](const MethodCall& call, MethodResult result) { handle(call, std::move(result)); }));
  platform_.flutterEngines().registerPlugins(*viewController_);
}

void MainFlutterWindow::setupGestureTracking() {
  eventMonitor_ = platform_.eventMonitors().addLocalMonitor(
      eventMask(EventType::keyDown), [this](const Event& event) {
        const bool arrow =
            event.keyCode == keyCode::leftArrow || event.keyCode == keyCode::rightArrow;
        if (arrow && (event.modifierFlags & eventModifier::control)) window_->orderOut();
        return true;
      });
}

void MainFlutterWindow::didLoseKeyboard() {
  const auto key = application_.keyWindow();
  if (key == window_) return;  // it is back, or was lent to an open menu only
  // A key that is pressed elsewhere is meant for there.
  HotkeyManager::shared().cancelRecording();
  if (key && key == TranslatePanelController::shared().panel()) return;
  if (key && key == ClipboardPanelController::shared().panel()) return;
  if (application_.hasVisibleSavePanel()) {
    window_->configure([](WindowConfiguration& c) { c.level = windowLevel::normal; });
    waitForFilePanelClose();
    return;
  }
  window_->orderOut();
}

void MainFlutterWindow::waitForFilePanelClose() {
  platform_.dispatch().mainQueue().asyncAfter(filePanelPollInterval, lifetime_.wrap([this] {
    if (application_.hasVisibleSavePanel()) {
      waitForFilePanelClose();
      return;
    }
    window_->configure([](WindowConfiguration& c) { c.level = windowLevel::status; });
    window_->makeKeyAndOrderFront();
    application_.activateIgnoringOtherApps();
  }));
}

void MainFlutterWindow::handle(const MethodCall& call, MethodResult result) {
  // Asked about first: an answer is made of hundreds of these.
  if (call.method == method::translateToken) {
    relayToken(call.arguments);
    return result.success();
  }
  if (UpdateChannelHandlers::handle(call, result)) return;
  if (hotkeyHandlers_.handle(call, result)) return;
  if (agentVisibilityHandlers_.handle(call, result)) return;
  const auto& arguments = call.arguments;
  auto& relay = TranslationRelay::shared();
  if (call.method == method::translateDone) {
    if (const auto gen = integerArgument(arguments, "gen")) relay.forwardDone(*gen);
  } else if (call.method == method::translateError) {
    const auto* message = stringArgument(arguments, "message");
    const auto gen = integerArgument(arguments, "gen");
    if (gen) {
      relay.forwardError(message ? *message : generationFailed, *gen,
                         stringArgument(arguments, "code"));
    }
  } else if (call.method == method::showEditorText) {
    const auto* text = stringArgument(arguments, "text");
    const auto* mode = stringArgument(arguments, "mode");
    if (text) relay.showEditorText(*text, mode ? *mode : "translate");
  } else if (call.method == method::dismissPanel) {
    relay.dismissPanel();
  } else if (call.method == method::quit) {
    application_.terminate();
  } else if (call.method == method::openUrl) {
    return handleOpenUrl(arguments, std::move(result));
  } else {
    return result.notImplemented();
  }
  result.success();
}

void MainFlutterWindow::relayToken(const Value& arguments) {
  const auto* token = stringArgument(arguments, "token");
  const auto gen = integerArgument(arguments, "gen");
  if (!token || !gen) return;
  if (arguments.asMap()->size() == 2) {
    TranslationRelay::shared().forwardToken(arguments);
  } else {
    TranslationRelay::shared().forwardToken(*token, *gen);
  }
}

void MainFlutterWindow::handleOpenUrl(const Value& arguments, MethodResult result) {
  const auto* text = arguments.asString();
  const auto url = text ? Url::parse(*text) : std::nullopt;
  if (!url) {
    result.error(badArguments, "openUrl requiere una URL válida", arguments);
    return;
  }
  platform_.workspace().openUrl(url->text);
  result.success();
}

}  // namespace zephyx
