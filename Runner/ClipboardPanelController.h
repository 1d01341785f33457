#pragma once

#include <memory>
#include <vector>

#include "Platform/Registration.h"
#include "Runner/ClipboardWriter.h"
#include "Runner/EnginePanelController.h"

namespace zephyx {

/// The floating panel with the clipboard history. Main thread.
class ClipboardPanelController final : public EnginePanelController {
 public:
  static ClipboardPanelController& shared();
  explicit ClipboardPanelController(Platform& platform);

  /// Remembers the application in front as the paste target, unless that is this panel itself,
  /// which keeps the earlier target.
  void rememberFrontmostApp();
  /// Shows the panel with the keyboard, centred on the pointer's screen, and tells its engine.
  void showPanel();
  void hidePanel();

 private:
  void didCreateChannel() override;
  void panelDidResignKey() override;
  void handle(const MethodCall& call, MethodResult result) override;

  void handleHide(MethodResult result);
  void handleSetPasteboard(const MethodCall& call, MethodResult result);
  void handleQuickLook(const MethodCall& call, MethodResult result);
  void handleShowInFinder(const MethodCall& call, MethodResult result);
  void updateCardBlurs(const Value& arguments);
  void startWindowDrag();

  /// Reused from call to call; never shrinks.
  std::vector<std::shared_ptr<VisualEffectView>> cardBlurPool_;
  ClipboardWriter writer_;
  Registration dragMonitor_;
  bool quickLookActive_ = false;
};

}  // namespace zephyx
