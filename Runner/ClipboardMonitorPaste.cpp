// The paste-back half of ClipboardMonitor: from the remembered application to the paste chord.

#include <string>
#include <utility>

#include "Platform/Application.h"
#include "Platform/Dispatch.h"
#include "Platform/Events.h"
#include "Platform/SystemLog.h"
#include "Platform/Workspace.h"
#include "Runner/AppDelegate.h"
#include "Runner/ClipboardMonitor.h"
#include "Runner/Descriptions.h"
#include "Runner/MainFlutterWindow.h"

namespace zephyx {
namespace {
constexpr int maximumAttempts = 10;
constexpr double retryInterval = 0.1;
constexpr const char* pasteIntoEditor = "pasteIntoEditor";
}  // namespace

bool ClipboardMonitor::activatePasteTarget() {
  if (!rememberedApp) {
    log_.log(
        "[PasteBack] activatePasteTarget: sin app recordada — el llamador sintetizará ⌘V a ciegas");
    return false;
  }
  auto* delegate = dynamic_cast<AppDelegate*>(application_.delegate());
  const auto window = delegate ? delegate->mainFlutterWindow() : nullptr;

  if (rememberedApp->bundleIdentifier() == application_.bundleIdentifier()) {
    log_.log(
        "[PasteBack] activatePasteTarget: destino SELF (editor de notas) — entrega por canal "
        "pasteIntoEditor");
    if (window && window->window().isVisible()) {
      window->window().makeKeyAndOrderFront();
      window->window().makeContentFirstResponder();
    }
    if (const auto channel = delegate ? delegate->methodChannel.lock() : nullptr) {
      channel->invokeMethod(pasteIntoEditor);
    }
    return true;
  }

  log_.log("[PasteBack] activatePasteTarget: destino EXTERNO " +
           describeIdentifier(rememberedApp->bundleIdentifier()) + " — activate + ⌘V del llamador");
  if (window && window->window().isVisible()) {
    log_.log(
        "[PasteBack] activatePasteTarget: ventana de notas leftover visible — orderOut antes de "
        "activar el destino externo");
    window->window().orderOut();
  }
  requestActivation(*rememberedApp);
  return false;
}

void ClipboardMonitor::requestActivation(RunningApplication& application) {
  const bool cooperative = workspace_.usesCooperativeActivation();
  const bool asked =
      cooperative ? application.activateCooperatively() : application.activateIgnoringOtherApps();
  log_.log(std::string("[PasteBack] requestActivation(") +
           (cooperative ? "cooperativa" : "legacy") + ") " +
           describeIdentifier(application.bundleIdentifier()) + " -> " + describe(asked));
}

void ClipboardMonitor::synthesizePasteWhenTargetActive(int attempt,
                                                       std::function<void()> completion) {
  if (rememberedApp && !rememberedApp->isActive()) {
    if (attempt < maximumAttempts) {
      requestActivation(*rememberedApp);
      dispatch_.mainQueue().asyncAfter(
          retryInterval, lifetime_.wrap([this, attempt, completion = std::move(completion)] {
            synthesizePasteWhenTargetActive(attempt + 1, completion);
          }));
      return;
    }
    log_.log("[PasteBack] synthesizePaste: " +
             describeIdentifier(rememberedApp->bundleIdentifier()) + " nunca se activó tras " +
             std::to_string(maximumAttempts) + " reintentos — se OMITE el ⌘V");
    completion();
    return;
  }
  if (attempt >= 1) {
    log_.log("[PasteBack] synthesizePaste: destino activo tras " + std::to_string(attempt) +
             " reintentos — posteando ⌘V");
  }
  eventPoster_.postKey(keyCode::v, eventModifier::command);
  completion();
}

}  // namespace zephyx
