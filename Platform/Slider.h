#pragma once

#include <algorithm>
#include <functional>

#include "Platform/Control.h"
#include "Platform/ViewVisitor.h"

namespace zephyx {

/// A horizontal slider for values from 0 to 1.
class Slider final : public Control {
 public:
  void accept(ViewVisitor& visitor) override { visitor.visitSlider(*this); }

  double value() const { return value_; }
  /// Does not call `onChange`. Values outside the range are clamped.
  void setValue(double value) { set(value_, std::clamp(value, 0.0, 1.0)); }

  /// With each new value while the user moves it. May end the slider.
  std::function<void(double)> onChange;

  /// The user moves it.
  void move(double value) {
    if (!isEnabled()) return;
    const auto action = onChange;
    const auto previous = value_;
    setValue(value);
    const auto reached = value_;
    if (action && reached != previous) action(reached);
  }

 private:
  double value_ = 0;
};

}  // namespace zephyx
