#include "Runner/StatRingView.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <utility>

#include "Platform/Canvas.h"
#include "Platform/Label.h"
#include "Platform/SymbolImage.h"
#include "Runner/TelemetryRelay.h"

namespace zephyx {
namespace {

constexpr Size ringSize{60, 60};
constexpr Point center{30, 37};
constexpr double radius = 20.5;  // of the middle of the line, so that its edges are whole points
constexpr double lineWidth = 5;
constexpr Rect symbolPlace{{18, 25}, {24, 24}};
constexpr Rect valueLine{{6, 27}, {48, 20}};
constexpr Rect titleLine{{0, 0}, {60, 12}};
constexpr double top = 90;  // degrees, from where the arc goes clockwise
constexpr double turn = 360;
/// Each step of the arc is about half a point long: nobody sees less.
constexpr int stepsOfTurn = 250;

constexpr Animation fade{.seconds = 0.18, .timing = Animation::Timing::easeInEaseOut};
constexpr TextStyle titleStyle{
    {.size = 9, .weight = FontWeight::semibold}, color::label, TextAlignment::center};
constexpr TextStyle valueStyle{
    {.size = 12, .monospacedDigits = true}, color::label, TextAlignment::center};

int arcSteps(double progress) {
  return static_cast<int>(std::lround(progress * stepsOfTurn));
}

std::string percentage(double progress) {
  return std::to_string(std::lround(progress * 100)) + "%";
}

std::string lowercased(std::string text) {
  for (auto& each : text) each = static_cast<char>(std::tolower(static_cast<unsigned char>(each)));
  return text;
}

}  // namespace

StatRingView::StatRingView(std::string title, std::string description, std::string symbol,
                           ColorProvider colorProvider)
    : View({{0, 0}, ringSize}),
      title_(std::move(title)),
      colorProvider_(std::move(colorProvider)),
      symbol_(std::make_shared<SymbolImage>(
          SystemSymbol{std::move(symbol), 13, FontWeight::medium, color::label})),
      value_(std::make_shared<Label>("", valueStyle)) {
  setAccessibilityLabel(std::move(description));
  symbol_->setFrame(symbolPlace);
  value_->setFrame(valueLine);
  value_->setAlpha(0);
  addChild(symbol_);
  addChild(value_);
  setProgress(0);
}

const std::string& StatRingView::valueText() const {
  return value_->text();
}

void StatRingView::setProgress(double progress) {
  progress = std::clamp(progress, 0.0, 1.0);
  setProgress(progress, percentage(progress));
}

void StatRingView::setProgress(double progress, const std::string& valueText) {
  const auto shown = std::pair(arcSteps(progress_), color());
  progress_ = std::clamp(progress, 0.0, 1.0);
  if (std::pair(arcSteps(progress_), color()) != shown) setNeedsDisplay();
  value_->setText(valueText);
  setAccessibilityValue(valueText);
  setToolTip(accessibilityLabel() + ": " + valueText);
}

void StatRingView::setHovered(bool isHovered) {
  if (std::exchange(isHovered_, isHovered) == isHovered) return;
  value_->setAlpha(isHovered ? 1 : 0, fade);
  symbol_->setAlpha(isHovered ? 0 : 1, fade);
}

void StatRingView::draw(Canvas& canvas) {
  canvas.strokeArc(center, radius, top, turn, lineWidth, color::tertiaryLabel);
  canvas.strokeArc(center, radius, top, -turn * arcSteps(progress_) / stepsOfTurn, lineWidth,
                   color());
  canvas.drawText(title_, titleLine, titleStyle);
}

void StatRingView::mouseEntered() {
  if (isHovered_) return;
  setHovered(true);
  TelemetryRelay::shared().track("stat_ring_hovered", {{"ring", lowercased(title_)}});
}

void StatRingView::mouseExited() {
  setHovered(false);
}

}  // namespace zephyx
