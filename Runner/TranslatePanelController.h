#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "Platform/Registration.h"
#include "Runner/EnginePanelController.h"

namespace zephyx {

/// The floating panel in which an AI action runs on captured text and shows its result. Main
/// thread.
class TranslatePanelController final : public EnginePanelController {
 public:
  static TranslatePanelController& shared();
  explicit TranslatePanelController(Platform& platform);

  /// Shows the panel, compact and with its content held back until its engine is ready. With
  /// `restoreOrigin` ("editor" or "external") the last session is brought back.
  void showPanel(const std::optional<std::string>& restoreOrigin = std::nullopt);
  /// Ends the session; `reason` is for the log. Every capture under way becomes stale.
  void hidePanel(const std::string& reason);

  /// The number of the current session.
  std::int64_t captureEpoch() const { return captureEpoch_; }
  /// Hands captured text to the panel's engine. A capture of an earlier session is dropped, and no
  /// text is generated for it.
  void deliver(const std::optional<std::string>& text, std::int64_t epoch, const std::string& mode);

 private:
  void didCreateChannel() override;
  void didBuildPanel() override;
  void panelDidResignKey() override;
  void handle(const MethodCall& call, MethodResult result) override;

  void didLoseKeyboard();
  void appDidResignActive();
  void dismiss();
  void handleRequest(const MethodCall& call, MethodResult result);
  void acceptToEditor(const Value& arguments);
  void setPanelWide(bool wide);
  void updateCardBlur(const Value& arguments);
  void beginContentBlackout();
  void endContentBlackout();
  void tellEngine(const char* method, const Value& arguments = {});

  std::shared_ptr<VisualEffectView> cardBlurView_;
  bool contentBlackedOut_ = false;
  bool isHiding_ = false;
  Registration blackoutFailsafe_;
  std::int64_t captureEpoch_ = 0;
  std::optional<double> lastShowAt_;  ///< media clock
  std::string currentMode_ = "translate";
  std::optional<std::string> sessionOutcome_;  ///< nothing means dismissed
};

}  // namespace zephyx
