#include "Runner/ClipboardPanelController.h"

#include <string>
#include <utility>

#include "Platform/Accessibility.h"
#include "Platform/Application.h"
#include "Platform/Dispatch.h"
#include "Platform/Events.h"
#include "Platform/Workspace.h"
#include "Runner/Arguments.h"
#include "Runner/ClipboardMonitor.h"
#include "Runner/Descriptions.h"
#include "Runner/MenuChannel.h"
#include "Runner/QuickLookCoordinator.h"
#include "Runner/SharedObjects.h"
#include "Runner/Url.h"

namespace zephyx {
namespace {

constexpr Size panelSize{560, 720};

namespace method {
constexpr const char* hidePanel = "clipboardHidePanel";
constexpr const char* updateCardFrames = "clipboardUpdateCardFrames";
constexpr const char* startWindowDrag = "clipboardStartWindowDrag";
constexpr const char* rememberFrontmost = "clipboardRememberFrontmost";
constexpr const char* setPasteboard = "clipboardSetPasteboard";
constexpr const char* paste = "clipboardPaste";
constexpr const char* checkAccessibility = "clipboardCheckAccessibility";
constexpr const char* requestAccessibility = "clipboardRequestAccessibility";
constexpr const char* showInFinder = "clipboardShowInFinder";
constexpr const char* quickLook = "clipboardQuickLook";
constexpr const char* clipboardOpenUrl = "clipboardOpenUrl";
constexpr const char* openUrl = "openUrl";
constexpr const char* panelShown = "clipboardPanelShown";  // sent
}  // namespace method

std::string requirement(const MethodCall& call, const char* what) {
  return std::string(call.method) + " requiere un " + what;
}

}  // namespace

ClipboardPanelController& ClipboardPanelController::shared() {
  return SharedObjects::current().get<ClipboardPanelController>();
}

ClipboardPanelController::ClipboardPanelController(Platform& platform)
    : EnginePanelController(platform, {.logTag = "[Clipboard]",
                                       .engineName = "clipboard_engine",
                                       .entryPoint = "clipboardMain",
                                       .size = panelSize}),
      writer_(platform) {}

void ClipboardPanelController::didCreateChannel() {
  auto& monitor = ClipboardMonitor::shared();
  monitor.methodChannel = methodChannel_;
  monitor.start();
  log("monitor iniciado");
}

void ClipboardPanelController::rememberFrontmostApp() {
  if (panel_ && panel_->isKeyWindow()) return;
  ClipboardMonitor::shared().rememberedApp = platform_.workspace().frontmostApplication();
}

void ClipboardPanelController::showPanel() {
  if (!ensurePanel()) return;
  rememberFrontmostApp();  // before the host itself comes to the front
  placeOnPointerScreen();
  bringToFront();
  log(std::string("showPanel: visible=") + describe(panel_->isVisible()) + " key=" +
      describe(panel_->isKeyWindow()) + " firstResponder=" + panel_->firstResponderDescription() +
      " frame=" + describe(panel_->frame()));
  methodChannel_->invokeMethod(method::panelShown);
}

void ClipboardPanelController::hidePanel() {
  if (panel_) panel_->orderOut();
  for (const auto& blur : cardBlurPool_) blur->setHidden(true);
}

void ClipboardPanelController::panelDidResignKey() {
  if (!quickLookActive_) hidePanel();
}

void ClipboardPanelController::handle(const MethodCall& call, MethodResult result) {
  const auto& name = call.method;
  if (name == method::hidePanel) {
    handleHide(std::move(result));
  } else if (name == method::updateCardFrames) {
    updateCardBlurs(call.arguments);
    result.success();
  } else if (name == method::startWindowDrag) {
    startWindowDrag();
    result.success();
  } else if (name == method::rememberFrontmost) {
    ClipboardMonitor::shared().rememberedApp = platform_.workspace().frontmostApplication();
    result.success();
  } else if (name == method::setPasteboard) {
    handleSetPasteboard(call, std::move(result));
  } else if (name == method::paste) {
    if (!call.arguments.asMap()) {
      result.error(badArguments, requirement(call, "mapa"));
      return;
    }
    handlePaste(lifetime_.wrap([this] { hidePanel(); }), std::move(result));
  } else if (name == method::checkAccessibility) {
    result.success(platform_.accessibility().isProcessTrusted());
  } else if (name == method::requestAccessibility) {
    result.success(platform_.accessibility().isProcessTrustedWithPrompt());
  } else if (name == method::showInFinder) {
    handleShowInFinder(call, std::move(result));
  } else if (name == method::quickLook) {
    handleQuickLook(call, std::move(result));
  } else if (name == method::clipboardOpenUrl || name == method::openUrl) {
    handleOpenUrl(call, std::move(result));
  } else {
    result.notImplemented();
  }
}

void ClipboardPanelController::handleHide(MethodResult result) {
  hidePanel();
  if (const auto& target = ClipboardMonitor::shared().rememberedApp) {
    target->activateIgnoringOtherApps();
  }
  result.success();
}

void ClipboardPanelController::handleSetPasteboard(const MethodCall& call, MethodResult result) {
  if (!call.arguments.asMap()) {
    result.error(badArguments, requirement(call, "mapa"));
    return;
  }
  auto answer = std::make_shared<MethodResult>(std::move(result));
  writer_.write(call.arguments, lifetime_.wrap([answer](std::int64_t changeCount) {
    ClipboardMonitor::shared().ignoreNextChangeCount = changeCount;
    answer->success();
  }));
}

void ClipboardPanelController::handleShowInFinder(const MethodCall& call, MethodResult result) {
  const auto* path = call.arguments.asString();
  if (!path) {
    result.error(badArguments, requirement(call, "String"));
    return;
  }
  platform_.workspace().activateFileViewerSelecting(*path);
  result.success();
}

void ClipboardPanelController::handleQuickLook(const MethodCall& call, MethodResult result) {
  const auto* path = call.arguments.asString();
  if (!path) {
    result.error(badArguments, requirement(call, "String"));
    return;
  }
  quickLookActive_ = true;
  auto& quickLook = QuickLookCoordinator::shared();
  quickLook.onPanelClosed = lifetime_.wrap([this] {
    quickLookActive_ = false;
    if (panel_->isVisible()) takeFocus();
  });
  quickLook.present("file://" + percentEncodedPath(*path));
  result.success();
}

void ClipboardPanelController::updateCardBlurs(const Value& arguments) {
  const auto* rects = listArgument(arguments, "rects");
  const auto radius = numberArgument(arguments, "cornerRadius");
  if (!rects || !radius) return;

  if (!viewController_) {
    log("cardBlurs: host nil");
    return;
  }
  if (!(viewController_->viewBounds().size.height > 0)) return;
  while (cardBlurPool_.size() < rects->size()) {
    cardBlurPool_.push_back(viewController_->addVisualEffectView());
  }
  for (std::size_t i = 0; i < rects->size(); ++i) {
    placeCardBackground(*cardBlurPool_[i], (*rects)[i], *radius);
  }
  for (std::size_t i = rects->size(); i < cardBlurPool_.size(); ++i) {
    cardBlurPool_[i]->setHidden(true);
  }
  log("cardBlurs: " + std::to_string(rects->size()) +
      " paneles, pool=" + std::to_string(cardBlurPool_.size()));
}

void ClipboardPanelController::startWindowDrag() {
  if (dragMonitor_) return;
  const auto start = platform_.screens().mouseLocation();
  const auto origin = panel_->frame().origin;
  dragMonitor_ = platform_.eventMonitors().addLocalMonitor(
      eventMask(EventType::leftMouseUp) | eventMask(EventType::leftMouseDragged),
      [this, start, origin](const Event& event) {
        if (event.type == EventType::leftMouseUp) {
          dragMonitor_.reset();
          return true;
        }
        const auto now = platform_.screens().mouseLocation();
        panel_->setFrame(
            {{origin.x + now.x - start.x, origin.y + now.y - start.y}, panel_->frame().size});
        return true;
      });
}

}  // namespace zephyx
