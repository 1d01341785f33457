#include "Runner/UsageMiniRingView.h"

#include <algorithm>

#include "Platform/Canvas.h"
#include "Platform/Label.h"
#include "Runner/AgentUsageText.h"

namespace zephyx {
namespace {

constexpr double lineWidth = 3.5;
constexpr double yellowFrom = 0.6;
constexpr double redFrom = 0.8;
constexpr const char* nothingKnown = "—";

TextStyle percentStyle(Color color) {
  return {.font = {.size = 9, .weight = FontWeight::semibold},
          .color = color,
          .alignment = TextAlignment::center};
}

}  // namespace

UsageMiniRingView::UsageMiniRingView() : percentLabel_(std::make_shared<Label>()) {
  addChild(percentLabel_);
  clear();
}

void UsageMiniRingView::show(const std::string& text, Color color) {
  percentLabel_->setText(text);
  percentLabel_->setStyle(percentStyle(color));
  setNeedsDisplay();
}

void UsageMiniRingView::setProgress(double progress) {
  progress_ = std::clamp(progress, 0.0, 1.0);
  show(agentUsageText::percent(progress_), color::label);
}

void UsageMiniRingView::clear() {
  progress_ = 0;
  show(nothingKnown, color::secondaryLabel);
}

Color UsageMiniRingView::progressColor() const {
  if (progress_ < yellowFrom) return color::systemGreen;
  return progress_ < redFrom ? color::systemYellow : color::systemRed;
}

void UsageMiniRingView::layout() {
  percentLabel_->setFrame(bounds());
}

void UsageMiniRingView::draw(Canvas& canvas) {
  const auto& size = bounds().size;
  const Point center{size.width / 2, size.height / 2};
  const double radius = (std::min(size.width, size.height) - lineWidth) / 2;
  canvas.strokeArc(center, radius, 90, 360, lineWidth, color::tertiaryLabel);
  canvas.strokeArc(center, radius, 90, -360 * progress_, lineWidth, progressColor());
}

}  // namespace zephyx
