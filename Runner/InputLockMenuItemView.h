#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Platform/Label.h"
#include "Platform/Switch.h"
#include "Platform/View.h"
#include "Runner/InputLockTarget.h"

namespace zephyx {

class InputLockController;

/// A row of the menu with the switch that locks one kind of input. Main thread.
class InputLockMenuItemView final : public View {
 public:
  /// `controller` outlives the view.
  InputLockMenuItemView(InputLockTarget target, const std::string& title,
                        const InputLockController& controller);

  /// The user has flipped the switch.
  std::function<void()> onToggle;

  /// Shows what the controller says.
  void applyState();

  const std::shared_ptr<Switch>& toggle() const { return toggle_; }
  const std::string& subtitle() const { return subtitleLabel_->text(); }

 protected:
  void layout() override;

 private:
  std::string subtitle(bool locked) const;

  const InputLockTarget target_;
  const InputLockController& controller_;
  std::shared_ptr<Label> titleLabel_;
  std::shared_ptr<Label> subtitleLabel_;
  std::shared_ptr<Switch> toggle_;
};

}  // namespace zephyx
