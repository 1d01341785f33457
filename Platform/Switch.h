#pragma once

#include <functional>

#include "Platform/Control.h"
#include "Platform/ViewVisitor.h"

namespace zephyx {

/// On or off.
class Switch final : public Control {
 public:
  void accept(ViewVisitor& visitor) override { visitor.visitSwitch(*this); }

  bool isOn() const { return isOn_; }
  /// Does not call `onToggle`.
  void setOn(bool on) { set(isOn_, on); }

  /// After the user has flipped it. May end the switch.
  std::function<void()> onToggle;

  /// The user flips it.
  void toggle() {
    if (!isEnabled()) return;
    const auto action = onToggle;
    setOn(!isOn_);
    if (action) action();
  }

 private:
  bool isOn_ = false;
};

}  // namespace zephyx
