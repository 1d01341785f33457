#include "Runner/EnginePanelController.h"

#include <cmath>
#include <cstdint>
#include <utility>

#include "Platform/Accessibility.h"
#include "Platform/Application.h"
#include "Platform/Dispatch.h"
#include "Platform/NotificationCenter.h"
#include "Platform/SystemLog.h"
#include "Platform/Workspace.h"
#include "Runner/Arguments.h"
#include "Runner/ClipboardMonitor.h"
#include "Runner/Descriptions.h"
#include "Runner/MenuChannel.h"
#include "Runner/PointerScreen.h"
#include "Runner/UpdateChannelHandlers.h"
#include "Runner/Url.h"

namespace zephyx {
namespace {

constexpr std::uint64_t panelCollectionBehavior =
    collectionBehavior::moveToActiveSpace | collectionBehavior::transient |
    collectionBehavior::ignoresCycle | collectionBehavior::fullScreenAuxiliary;

constexpr double activationDelay = 0.15;  // from the paste call: the panel has gone by then
constexpr double keystrokeDelay = 0.1;    // from the activation request

}  // namespace

EnginePanelController::EnginePanelController(Platform& platform, EnginePanelTraits traits)
    : platform_(platform), traits_(std::move(traits)) {}

EnginePanelController::~EnginePanelController() {
  observers_.clear();  // the panel's end is none of their news
  // An engine ends in this order: handlers off, its view out of the window, shut down, released.
  if (methodChannel_) methodChannel_->setMethodCallHandler(nullptr);
  if (panel_) panel_->setContentViewController(nullptr);
  if (engine_) engine_->shutDown();
}

void EnginePanelController::log(const std::string& message) {
  platform_.systemLog().log(traits_.logTag + " " + message);
}

void EnginePanelController::logStep(const std::string& message) {
  if (traits_.logsEveryStep) log(message);
}

void EnginePanelController::initialize() {
  if (isInitialized_) return;
  log("initialize() start");
  engine_ = platform_.flutterEngines().makeEngine(traits_.engineName);
  const bool runs = engine_->run(traits_.entryPoint);
  log("engine.run(" + traits_.entryPoint + ") -> " + describe(runs));
  auto controller = platform_.flutterEngines().makeViewController(engine_);
  logStep("FlutterViewController creado");
  platform_.flutterEngines().registerPlugins(*controller);
  logStep("plugins registrados");
  controller->makeBackgroundTransparent();
  logStep("vista cargada (fondo transparente)");
  methodChannel_ = makeMenuChannel(engine_->binaryMessenger(), platform_.systemLog());
  methodChannel_->setMethodCallHandler(
      lifetime_.wrap([this](const MethodCall& call, MethodResult result) {
        if (!UpdateChannelHandlers::handle(call, result)) handle(call, std::move(result));
      }));
  logStep("canal listo");
  didCreateChannel();
  viewController_ = std::move(controller);
  panel_ = buildPanel(viewController_);
  logStep("panel construido");
  observe(notification::windowDidResignKey, panel_->notificationObject(),
          [this] { panelDidResignKey(); });
  didBuildPanel();
  isInitialized_ = true;
  log(std::string("initialize() done — panel created: ") + describe(panel_ != nullptr));
}

void EnginePanelController::observe(const char* notification, const void* object,
                                    std::function<void()> handler) {
  observers_.push_back(platform_.defaultNotificationCenter().addObserver(
      notification, object, lifetime_.wrap(std::move(handler))));
}

std::shared_ptr<Window> EnginePanelController::buildPanel(
    const std::shared_ptr<FlutterViewController>& controller) {
  logStep("buildPanel: alloc");
  auto panel = platform_.application().makeWindow({
      .kind = WindowKind::panel,
      .contentRect = {{0, 0}, traits_.size},
      .styleMask = styleMask::borderless,
      .level = windowLevel::status,
      .collectionBehavior = panelCollectionBehavior,
      .titlebarAppearsTransparent = true,
      .titleHidden = true,
      .standardButtonsHidden = true,
      .movableByWindowBackground = false,
      .floatingPanel = true,
      .hidesOnDeactivate = false,
      .transparentBackground = true,
      .hasShadow = traits_.hasShadow,
      .canBecomeKey = true,
      .canBecomeMain = false,
  });
  logStep("buildPanel: panel alloc ok");
  logStep("buildPanel: props set");
  panel->setContentViewController(controller);
  panel->setFrame({panel->frame().origin, traits_.size});  // the content may have resized it
  logStep("buildPanel: contenedor transparente + flutter, size=" + describe(panel->frame().size));
  return panel;
}

bool EnginePanelController::ensurePanel() {
  if (panel_) return true;
  log("showPanel: panel nil → reintentando initialize()");
  initialize();
  if (panel_) return true;
  log("showPanel: panel sigue nil tras initialize() — ver logs de initialize()");
  return false;
}

void EnginePanelController::placeOnPointerScreen() {
  const auto screen = pointerScreen(platform_.screens());
  if (!screen) {
    panel_->setFrame({{0, 0}, traits_.size});
    panel_->center();
    return;
  }
  const auto& visible = screen->visibleFrame;
  panel_->setFrame(
      {{visible.midX() - traits_.size.width / 2, visible.midY() - traits_.size.height / 2},
       traits_.size});
}

void EnginePanelController::bringToFront() {
  platform_.application().activateIgnoringOtherApps();
  panel_->makeKeyAndOrderFront();
  panel_->orderFrontRegardless();
  panel_->makeContentFirstResponder();
}

void EnginePanelController::takeFocus() {
  panel_->makeKeyAndOrderFront();
  panel_->makeContentFirstResponder();
}

void EnginePanelController::handlePaste(std::function<void()> hide, MethodResult result) {
  if (!platform_.accessibility().isProcessTrusted()) {
    result.success("notTrusted");
    return;
  }
  auto& queue = platform_.dispatch().mainQueue();
  queue.async(std::move(hide));
  auto answer = std::make_shared<MethodResult>(std::move(result));
  queue.asyncAfter(activationDelay, lifetime_.wrap([this, answer] {
    if (ClipboardMonitor::shared().activatePasteTarget()) {
      answer->success("pasted");
      return;
    }
    platform_.dispatch().mainQueue().asyncAfter(keystrokeDelay, lifetime_.wrap([answer] {
      ClipboardMonitor::shared().synthesizePasteWhenTargetActive(
          0, [answer] { answer->success("pasted"); });
    }));
  }));
}

void EnginePanelController::handleOpenUrl(const MethodCall& call, MethodResult result) {
  const auto* text = call.arguments.asString();
  const auto url = text ? Url::parse(*text) : std::nullopt;
  if (!url) {
    result.error(badArguments, "openUrl requiere una URL válida");
    return;
  }
  platform_.workspace().openUrl(url->text);
  result.success();
}

bool EnginePanelController::placeCardBackground(VisualEffectView& background, const Value& card,
                                                double cornerRadius) {
  const auto x = numberArgument(card, "x");
  const auto y = numberArgument(card, "y");
  const auto w = numberArgument(card, "w");
  const auto h = numberArgument(card, "h");
  if (!x || !y || !w || !h) return false;
  // Layers refuse other geometry with an exception.
  if (!std::isfinite(*x + *y + *w + *h + cornerRadius)) return false;
  const double hostHeight = viewController_->viewBounds().size.height;
  background.setFrame({{*x, hostHeight - *y - *h}, {*w, *h}});
  background.setCornerRadius(cornerRadius);
  background.setHidden(false);
  return true;
}

}  // namespace zephyx
