#include "Runner/BrightnessMenuItemView.h"

#include "Platform/SymbolImage.h"
#include "Runner/ExternalDisplayBrightness.h"

namespace zephyx {
namespace {

constexpr const char* titleWithoutBacklight = "External Monitor Brightness (picture only)";
constexpr Size rowSize{280, 62};
constexpr double margin = 16;
constexpr double titleSize = 12;
constexpr double symbolSize = 11;
constexpr Size symbolFrame{14, 18};
constexpr double gap = 8;  // between a symbol and the slider
// From the row's bottom.
constexpr double titleBottom = 37;
constexpr double titleHeight = 17;
constexpr double controlsMiddle = 21;
constexpr double sliderHeight = 26;

std::shared_ptr<SymbolImage> makeSymbol(const char* name, const char* description) {
  return std::make_shared<SymbolImage>(
      SystemSymbol{name, symbolSize, FontWeight::regular, color::secondaryLabel}, description);
}

}  // namespace

BrightnessMenuItemView::BrightnessMenuItemView(ExternalDisplayBrightness& brightness)
    : View({{0, 0}, rowSize}),
      brightness_(brightness),
      label_(std::make_shared<Label>(title, TextStyle{.font = {titleSize}})),
      decreaseSymbol_(makeSymbol("moon.fill", "Decrease brightness")),
      slider_(std::make_shared<Slider>()),
      increaseSymbol_(makeSymbol("sun.max.fill", "Increase brightness")) {
  slider_->setAccessibilityLabel(title);
  slider_->setValue(brightness.last());
  slider_->onChange = [&brightness](double value) { brightness.setBrightness(value); };
  for (const auto& child : std::initializer_list<std::shared_ptr<View>>{label_, decreaseSymbol_,
                                                                        slider_, increaseSymbol_}) {
    addChild(child);
  }
  relayout();
}

void BrightnessMenuItemView::refresh() {
  brightness_.rescan();
  const auto& obstacle = brightness_.obstacle();
  label_->setText(obstacle ? titleWithoutBacklight : title);
  setToolTip(obstacle.value_or(""));
  label_->setToolTip(toolTip());
  slider_->setValue(brightness_.last());
}

void BrightnessMenuItemView::layout() {
  const double right = bounds().size.width - margin;
  label_->setFrame({{margin, titleBottom}, {right - margin, titleHeight}});
  const double symbolBottom = controlsMiddle - symbolFrame.height / 2;
  decreaseSymbol_->setFrame({{margin, symbolBottom}, symbolFrame});
  increaseSymbol_->setFrame({{right - symbolFrame.width, symbolBottom}, symbolFrame});
  const double sliderLeft = margin + symbolFrame.width + gap;
  const double sliderRight = right - symbolFrame.width - gap;
  slider_->setFrame(
      {{sliderLeft, controlsMiddle - sliderHeight / 2}, {sliderRight - sliderLeft, sliderHeight}});
}

}  // namespace zephyx
