#pragma once

#include <memory>

#include "Platform/Label.h"
#include "Platform/Slider.h"
#include "Platform/View.h"

namespace zephyx {

class ExternalDisplayBrightness;

/// The menu's row with the slider that sets the brightness of external displays. Main thread.
class BrightnessMenuItemView final : public View {
 public:
  static constexpr const char* title = "External Monitor Brightness";

  /// `brightness` outlives the view.
  explicit BrightnessMenuItemView(ExternalDisplayBrightness& brightness);

  /// Finds the displays anew and shows the last level.
  void refresh();

  const std::shared_ptr<Label>& label() const { return label_; }
  const std::shared_ptr<Slider>& slider() const { return slider_; }

 protected:
  void layout() override;

 private:
  ExternalDisplayBrightness& brightness_;
  std::shared_ptr<Label> label_;
  std::shared_ptr<View> decreaseSymbol_;
  std::shared_ptr<Slider> slider_;
  std::shared_ptr<View> increaseSymbol_;
};

}  // namespace zephyx
