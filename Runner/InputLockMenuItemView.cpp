#include "Runner/InputLockMenuItemView.h"

#include "Runner/InputLockController.h"

namespace zephyx {
namespace {

constexpr Size rowSize{320, 48};
constexpr double margin = 16;
constexpr double gap = 8;  // between the texts and the switch
constexpr Size switchSize{46, 30};
// From the row's bottom.
constexpr double titleBottom = 26;
constexpr double titleHeight = 17;
constexpr double subtitleBottom = 7;
constexpr double subtitleHeight = 15;

}  // namespace

InputLockMenuItemView::InputLockMenuItemView(InputLockTarget target, const std::string& title,
                                             const InputLockController& controller)
    : View({{0, 0}, rowSize}),
      target_(target),
      controller_(controller),
      titleLabel_(std::make_shared<Label>(title, TextStyle{.font = {13}})),
      subtitleLabel_(
          std::make_shared<Label>("", TextStyle{.font = {11}, .color = color::secondaryLabel})),
      toggle_(std::make_shared<Switch>()) {
  toggle_->setAccessibilityLabel(title);
  toggle_->onToggle = [this] {
    if (onToggle) onToggle();
  };
  for (const auto& child :
       {std::shared_ptr<View>(titleLabel_), std::shared_ptr<View>(subtitleLabel_),
        std::shared_ptr<View>(toggle_)}) {
    addChild(child);
  }
  relayout();
  applyState();
}

void InputLockMenuItemView::applyState() {
  const bool locked = controller_.activeLock() == target_;
  toggle_->setOn(locked);
  subtitleLabel_->setText(subtitle(locked));
}

std::string InputLockMenuItemView::subtitle(bool locked) const {
  const auto shortcut = controller_.shortcutDisplay(target_);
  return locked ? "Locked — press " + shortcut + " or turn off here" : shortcut;
}

void InputLockMenuItemView::layout() {
  const double switchLeft = bounds().size.width - margin - switchSize.width;
  const double textWidth = switchLeft - gap - margin;
  titleLabel_->setFrame({{margin, titleBottom}, {textWidth, titleHeight}});
  subtitleLabel_->setFrame({{margin, subtitleBottom}, {textWidth, subtitleHeight}});
  toggle_->setFrame({{switchLeft, (bounds().size.height - switchSize.height) / 2}, switchSize});
}

}  // namespace zephyx
