#include "Runner/AgentRowView.h"

#include "Platform/Canvas.h"
#include "Platform/Label.h"
#include "Platform/SymbolImage.h"
#include "Runner/UsageMiniRingView.h"

namespace zephyx {
namespace {

constexpr double insetX = 10;
constexpr double insetY = 4;
constexpr double backgroundRadius = 8;
constexpr double ringLeft = 18;
constexpr double ringSide = 36;
constexpr double chevronSide = 16;
constexpr double titleHeight = 18;
constexpr double subtitleHeight = 16;

constexpr TextStyle titleStyle{.font = {.size = 13, .weight = FontWeight::semibold},
                               .color = color::label};
constexpr TextStyle subtitleStyle{.font = {.size = 11, .monospacedDigits = true},
                                  .color = color::secondaryLabel};

SystemSymbol chevronSymbol(bool isOpen) {
  return {isOpen ? "chevron.up" : "chevron.down", 11, FontWeight::semibold, color::secondaryLabel};
}

}  // namespace

AgentRowView::AgentRowView(const std::string& name)
    : ring_(std::make_shared<UsageMiniRingView>()),
      titleLabel_(std::make_shared<Label>(name, titleStyle)),
      subtitleLabel_(std::make_shared<Label>("", subtitleStyle)),
      chevron_(std::make_shared<SymbolImage>(chevronSymbol(false))) {
  setAcceptsClicks(true);
  setAccessibilityLabel(name);
  chevron_->setHidden(true);
  addChild(ring_);
  addChild(titleLabel_);
  addChild(subtitleLabel_);
  addChild(chevron_);
}

void AgentRowView::setSubtitle(const std::string& text) {
  subtitleLabel_->setText(text);
  setAccessibilityValue(text);
}

void AgentRowView::setTitleColor(Color color) {
  auto style = titleStyle;
  style.color = color;
  titleLabel_->setStyle(style);
}

void AgentRowView::setDisclosure(Disclosure disclosure) {
  disclosure_ = disclosure;
  const bool isOpen = disclosure == Disclosure::open;
  chevron_->setHidden(disclosure == Disclosure::none);
  chevron_->setSymbol(chevronSymbol(isOpen));
  chevron_->setAccessibilityLabel(isOpen ? "Collapse" : "Expand");
}

void AgentRowView::layout() {
  const auto& size = bounds().size;
  const double middle = size.height / 2;
  const double chevronLeft = size.width - textRight - chevronSide;
  const double textWidth = chevronLeft - 8 - textLeft;
  ring_->setFrame({{ringLeft, middle - ringSide / 2}, {ringSide, ringSide}});
  titleLabel_->setFrame({{textLeft, middle}, {textWidth, titleHeight}});
  subtitleLabel_->setFrame({{textLeft, middle - subtitleHeight}, {textWidth, subtitleHeight}});
  chevron_->setFrame({{chevronLeft, middle - chevronSide / 2}, {chevronSide, chevronSide}});
}

void AgentRowView::draw(Canvas& canvas) {
  if (!isHovered_) return;
  const auto& size = bounds().size;
  canvas.fillRoundedRect({{insetX, insetY}, {size.width - 2 * insetX, size.height - 2 * insetY}},
                         backgroundRadius, color::hoverBackground);
}

void AgentRowView::mouseEntered() {
  isHovered_ = true;
  setNeedsDisplay();
}

void AgentRowView::mouseExited() {
  isHovered_ = false;
  setNeedsDisplay();
}

void AgentRowView::clicked(Point) {
  if (onClick) onClick();
}

}  // namespace zephyx
