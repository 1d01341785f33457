#include "Runner/TranslatePanelController.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>

#include "Platform/Accessibility.h"
#include "Platform/Application.h"
#include "Platform/Dispatch.h"
#include "Platform/NotificationCenter.h"
#include "Platform/Workspace.h"
#include "Runner/Arguments.h"
#include "Runner/ClipboardMonitor.h"
#include "Runner/Descriptions.h"
#include "Runner/MenuChannel.h"
#include "Runner/SharedObjects.h"
#include "Runner/TelemetryRelay.h"
#include "Runner/TranslationRelay.h"

namespace zephyx {
namespace {

constexpr Size compactPanelSize{620, 580};
constexpr Size widePanelSize{1060, 640};
constexpr double screenMargin = 40;    // of both sides together
constexpr double sizeTolerance = 0.5;  // points
constexpr double blackoutLimit = 0.25;
constexpr double resignGrace = 0.6;

namespace method {
constexpr const char* request = "translateRequest";
constexpr const char* updateCardFrames = "translateUpdateCardFrames";
constexpr const char* setPanelWide = "translateSetPanelWide";
constexpr const char* panelReady = "translatePanelReady";
constexpr const char* cancel = "translateCancel";
constexpr const char* hidePanel = "translateHidePanel";
constexpr const char* paste = "translatePaste";
constexpr const char* acceptToEditor = "translateAcceptToEditor";
constexpr const char* checkAccessibility = "translateCheckAccessibility";
constexpr const char* requestAccessibility = "translateRequestAccessibility";
constexpr const char* openUrl = "openUrl";
}  // namespace method

namespace sentMethod {
constexpr const char* panelShown = "translatePanelShown";
constexpr const char* show = "translateShow";
constexpr const char* restoreLast = "translateRestoreLast";
constexpr const char* focusPanel = "translateFocusPanel";
}  // namespace sentMethod

double overlap(double start, double length, double otherStart, double otherLength) {
  return std::min(start + length, otherStart + otherLength) - std::max(start, otherStart);
}

/// The screen that most of the frame is on, else the main screen; nothing without screens.
std::optional<Screen> screenOf(const Rect& frame, const Screens& screens) {
  std::optional<Screen> best;
  double largest = 0;
  const auto all = screens.screens();
  for (const auto& screen : all) {
    const auto& other = screen.frame;
    const double width =
        overlap(frame.origin.x, frame.size.width, other.origin.x, other.size.width);
    const double height =
        overlap(frame.origin.y, frame.size.height, other.origin.y, other.size.height);
    if (width <= 0 || height <= 0 || width * height <= largest) continue;
    largest = width * height;
    best = screen;
  }
  const auto main = screens.mainScreenIndex();
  if (!best && main >= 0) best = all.at(static_cast<std::size_t>(main));
  return best;
}

}  // namespace

TranslatePanelController& TranslatePanelController::shared() {
  return SharedObjects::current().get<TranslatePanelController>();
}

TranslatePanelController::TranslatePanelController(Platform& platform)
    : EnginePanelController(platform, {.logTag = "[Translate]",
                                       .engineName = "translate_engine",
                                       .entryPoint = "translateMain",
                                       .size = compactPanelSize,
                                       .hasShadow = false,  // the card draws its own
                                       .logsEveryStep = false}) {}

void TranslatePanelController::didCreateChannel() {
  TranslationRelay::shared().panelChannel = methodChannel_;
}

void TranslatePanelController::didBuildPanel() {
  observe(notification::windowDidBecomeKey, panel_->notificationObject(),
          [this] { tellEngine(sentMethod::focusPanel); });
  observe(notification::applicationDidResignActive, nullptr, [this] { appDidResignActive(); });
}

void TranslatePanelController::tellEngine(const char* method, const Value& arguments) {
  if (methodChannel_) methodChannel_->invokeMethod(method, arguments);
}

void TranslatePanelController::showPanel(const std::optional<std::string>& restoreOrigin) {
  if (!ensurePanel()) return;
  placeOnPointerScreen();
  endContentBlackout();
  beginContentBlackout();
  lastShowAt_ = platform_.dispatch().mediaClock();
  bringToFront();
  if (restoreOrigin) tellEngine(sentMethod::restoreLast, Map{{"origin", *restoreOrigin}});
  log(std::string("showPanel: visible=") + describe(panel_->isVisible()) +
      " key=" + describe(panel_->isKeyWindow()));
  tellEngine(sentMethod::panelShown);
}

void TranslatePanelController::hidePanel(const std::string& reason) {
  log("hidePanel — motivo: " + reason);
  if (panel_ && panel_->isVisible()) {
    TelemetryRelay::shared().track(
        "ai_action_completed",
        {{"mode", currentMode_}, {"outcome", sessionOutcome_.value_or("dismissed")}});
  }
  sessionOutcome_.reset();
  // A number that comes again would let a stale capture pass.
  if (captureEpoch_ == std::numeric_limits<std::int64_t>::max()) std::abort();
  ++captureEpoch_;
  endContentBlackout();
  if (cardBlurView_) cardBlurView_->setHidden(true);
  isHiding_ = true;
  if (panel_) panel_->orderOut();
  isHiding_ = false;
}

// The engine lays the new session out before anything of it is seen.
void TranslatePanelController::beginContentBlackout() {
  contentBlackedOut_ = true;
  viewController_->setViewAlpha(0);
  blackoutFailsafe_ =
      scheduleOnce(platform_.dispatch().mainQueue(), blackoutLimit, lifetime_.wrap([this] {
        log("blackout: failsafe 250ms — revelando sin translatePanelReady");
        endContentBlackout();
      }));
}

void TranslatePanelController::endContentBlackout() {
  blackoutFailsafe_.reset();
  if (!std::exchange(contentBlackedOut_, false)) return;
  viewController_->setViewAlpha(1);
}

void TranslatePanelController::deliver(const std::optional<std::string>& text, std::int64_t epoch,
                                       const std::string& mode) {
  if (epoch != captureEpoch_) {
    log("deliver: época obsoleta (" + std::to_string(epoch) +
        " != " + std::to_string(captureEpoch_) + ") — descartando captura tardía tras dismiss");
    TranslationRelay::shared().cancelGeneration();
    return;
  }
  currentMode_ = mode;
  tellEngine(sentMethod::show,
             Map{{"text", text.value_or("")}, {"mode", mode}, {"source", "external"}});
}

void TranslatePanelController::panelDidResignKey() {
  if (isHiding_) return;  // the loss is our own doing
  // Only then is it known which window has the keyboard instead.
  platform_.dispatch().mainQueue().async(lifetime_.wrap([this] { didLoseKeyboard(); }));
}

void TranslatePanelController::didLoseKeyboard() {
  if (!panel_->isVisible() || panel_->isKeyWindow()) return;
  auto& application = platform_.application();
  const double now = platform_.dispatch().mediaClock();
  if (application.isActive() && lastShowAt_ && now - *lastShowAt_ < resignGrace) {
    log("panelDidResignKey: resign transitorio dentro de la gracia — reafirmando key");
    takeFocus();
    tellEngine(sentMethod::focusPanel);
    return;
  }
  const auto windows = application.windows();
  const auto key = application.keyWindow();
  if (key && !windows.empty() && key == windows.front()) {
    log("panelDidResignKey: key pasó a la ventana de notas — panel queda visible (overlay), "
        "generación continúa");
    return;
  }
  hidePanel("panelDidResignKey (click fuera / pérdida de foco genuina)");
}

void TranslatePanelController::appDidResignActive() {
  if (panel_->isVisible()) hidePanel("appDidResignActive (cambio a otra app)");
}

void TranslatePanelController::handle(const MethodCall& call, MethodResult result) {
  const auto& name = call.method;
  if (name == method::request) {
    return handleRequest(call, std::move(result));
  } else if (name == method::updateCardFrames) {
    updateCardBlur(call.arguments);
  } else if (name == method::setPanelWide) {
    if (const auto wide = boolArgument(call.arguments, "wide")) setPanelWide(*wide);
  } else if (name == method::panelReady) {
    endContentBlackout();
  } else if (name == method::cancel) {
    TranslationRelay::shared().cancelGeneration();
  } else if (name == method::hidePanel) {
    dismiss();
  } else if (name == method::paste) {
    sessionOutcome_ = "pasted";
    return handlePaste(lifetime_.wrap([this] { hidePanel("handlePaste (Paste exitoso)"); }),
                       std::move(result));
  } else if (name == method::acceptToEditor) {
    acceptToEditor(call.arguments);
  } else if (name == method::checkAccessibility) {
    return result.success(platform_.accessibility().isProcessTrusted());
  } else if (name == method::requestAccessibility) {
    return result.success(platform_.accessibility().isProcessTrustedWithPrompt());
  } else if (name == method::openUrl) {
    return handleOpenUrl(call, std::move(result));
  } else {
    return result.notImplemented();
  }
  result.success();
}

// The focus goes back to where the user was, unless the user has already gone elsewhere.
void TranslatePanelController::dismiss() {
  const bool hadKeyboard = panel_ && panel_->isKeyWindow();
  hidePanel("translateHidePanel (dismiss explícito: Esc / translateDismiss)");
  if (const auto& target = ClipboardMonitor::shared().rememberedApp; hadKeyboard && target) {
    target->activateIgnoringOtherApps();
  }
}

void TranslatePanelController::handleRequest(const MethodCall& call, MethodResult result) {
  const auto& arguments = call.arguments;
  if (!stringArgument(arguments, "text") || !stringArgument(arguments, "direction")) {
    result.error(badArguments, "translateRequest requiere {text, direction}");
    return;
  }
  Map request;
  for (const char* key : {"text", "direction", "mode", "tone"}) {
    if (const auto* value = stringArgument(arguments, key)) request.append(key, *value);
  }
  if (const auto gen = integerArgument(arguments, "gen")) request.append("gen", *gen);
  TranslationRelay::shared().requestGeneration(std::move(request));
  result.success();
}

void TranslatePanelController::acceptToEditor(const Value& arguments) {
  const auto* text = stringArgument(arguments, "text");
  if (!text) return;
  sessionOutcome_ = "accepted";
  TranslationRelay::shared().acceptToEditor(*text);
}

void TranslatePanelController::setPanelWide(bool wide) {
  if (!panel_ || !panel_->isVisible()) return;
  auto size = wide ? widePanelSize : compactPanelSize;
  const auto frame = panel_->frame();
  const auto screen = screenOf(frame, platform_.screens());
  if (screen) {
    const auto& visible = screen->visibleFrame.size;
    size.width = std::min(size.width, visible.width - screenMargin);
    size.height = std::min(size.height, visible.height - screenMargin);
  }
  if (std::abs(frame.size.width - size.width) <= sizeTolerance &&
      std::abs(frame.size.height - size.height) <= sizeTolerance) {
    return;
  }
  Point origin{frame.midX() - size.width / 2, frame.midY() - size.height / 2};
  if (screen) {
    const auto& visible = screen->visibleFrame;
    origin.x =
        std::clamp(origin.x, visible.origin.x, visible.origin.x + visible.size.width - size.width);
    origin.y = std::clamp(origin.y, visible.origin.y,
                          visible.origin.y + visible.size.height - size.height);
  }
  panel_->setFrame({origin, size});
}

void TranslatePanelController::updateCardBlur(const Value& arguments) {
  if (!viewController_) {
    log("cardBlur: host nil");
    return;
  }
  const auto* rects = listArgument(arguments, "rects");
  const auto radius = numberArgument(arguments, "cornerRadius");
  const bool hasCard = rects && !rects->empty() && radius;
  if (hasCard && viewController_->viewBounds().size.height > 0) {
    if (!cardBlurView_) cardBlurView_ = viewController_->addVisualEffectView();
    if (placeCardBackground(*cardBlurView_, rects->front(), *radius)) return;
  }
  if (cardBlurView_) cardBlurView_->setHidden(true);
}

}  // namespace zephyx
