#include "Tests/Simulated/SimulatedStatusBar.h"

#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedFaults.h"

namespace zephyx {

SimulatedStatusItem::~SimulatedStatusItem() {
  if (menu_ && menu_->items().size() != rowsWhenSet_) faults_.add("a menu that grew while shown");
}

void SimulatedStatusItem::setImage(const std::string& symbol,
                                   const std::string& accessibilityDescription) {
  dispatch_.requireMainThread("StatusItem::setImage");
  symbol_ = symbol;
  accessibilityDescription_ = accessibilityDescription;
}

void SimulatedStatusItem::setMenu(std::shared_ptr<Menu> menu) {
  menu_ = std::move(menu);
  rowsWhenSet_ = menu_ ? menu_->items().size() : 0;
}

void SimulatedStatusItem::cancelTrackingWithoutAnimation() {
  if (!menuIsOpen_) return;
  menuIsOpen_ = false;
  if (auto* delegate = menu_->delegate()) delegate->menuDidClose(*menu_);
}

void SimulatedStatusItem::performClick() {
  openMenu();
}

void SimulatedStatusItem::openMenu() {
  if (!menu_ || menuIsOpen_) return;
  if (auto* delegate = menu_->delegate()) {
    delegate->menuNeedsUpdate(*menu_);
    delegate->menuWillOpen(*menu_);
  }
  menuIsOpen_ = true;
}

template <typename Predicate>
bool SimulatedStatusItem::chooseRow(Predicate predicate) {
  if (!menuIsOpen_) return false;
  for (const auto& item : menu_->items()) {
    // A view answers the user itself, and leaves the menu open.
    if (item->isSeparator() || item->view()) continue;
    if (item->properties().isHidden || !item->properties().isEnabled) continue;
    if (!predicate(*item)) continue;
    const auto chosen = item;
    cancelTrackingWithoutAnimation();
    chosen->perform();
    return true;
  }
  return false;
}

bool SimulatedStatusItem::choose(const std::string& action) {
  return chooseRow([&](const MenuItem& item) { return item.action() == action; });
}

bool SimulatedStatusItem::chooseTitle(const std::string& title) {
  return chooseRow([&](const MenuItem& item) { return item.properties().title == title; });
}

std::vector<std::string> SimulatedStatusItem::shownRows() const {
  std::vector<std::string> rows;
  for (const auto& item : menu_->items()) {
    if (item->properties().isHidden) continue;
    rows.push_back(item->isSeparator() ? "-" : item->properties().title);
  }
  return rows;
}

std::shared_ptr<StatusItem> SimulatedStatusBar::makeStatusItem(double length) {
  auto item = std::make_shared<SimulatedStatusItem>(length, dispatch_, faults_);
  item_ = item;
  return item;
}

}  // namespace zephyx
