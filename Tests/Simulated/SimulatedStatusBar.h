#pragma once

#include "Platform/Menu.h"
#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedFaults.h"

namespace zephyx {

class SimulatedStatusItem final : public StatusItem {
 public:
  SimulatedStatusItem(double length, SimulatedDispatch& dispatch, SimulatedFaults& faults)
      : length_(length), dispatch_(dispatch), faults_(faults) {}
  ~SimulatedStatusItem() override {
    if (menu_ && menu_->items().size() != rowsWhenSet_) faults_.add("a menu that grew while shown");
  }

  void setImage(const std::string& symbol, const std::string& accessibilityDescription) override {
    dispatch_.requireMainThread("StatusItem::setImage");
    symbol_ = symbol;
    accessibilityDescription_ = accessibilityDescription;
  }
  void setMenu(std::shared_ptr<Menu> menu) override {
    menu_ = std::move(menu);
    rowsWhenSet_ = menu_ ? menu_->items().size() : 0;
  }
  void cancelTrackingWithoutAnimation() override {
    if (!menuIsOpen_) return;
    menuIsOpen_ = false;
    if (auto* delegate = menu_->delegate()) delegate->menuDidClose(*menu_);
  }
  void performClick() override { openMenu(); }

  /// The user opens the menu.
  void openMenu() {
    if (!menu_ || menuIsOpen_) return;
    if (auto* delegate = menu_->delegate()) {
      delegate->menuNeedsUpdate(*menu_);
      delegate->menuWillOpen(*menu_);
    }
    menuIsOpen_ = true;
  }
  bool menuIsOpen() const { return menuIsOpen_; }
  /// The user picks the row with this action, or with this title, in the open menu. False, and
  /// nothing done, when there is no such row that can be chosen.
  bool choose(const std::string& action) {
    return chooseRow([&](const MenuItem& item) { return item.action() == action; });
  }
  bool chooseTitle(const std::string& title) {
    return chooseRow([&](const MenuItem& item) { return item.properties().title == title; });
  }
  /// As the open menu shows them.
  std::vector<std::string> shownRows() const {
    std::vector<std::string> rows;
    for (const auto& item : menu_->items()) {
      if (item->properties().isHidden) continue;
      rows.push_back(item->isSeparator() ? "-" : item->properties().title);
    }
    return rows;
  }

  const std::shared_ptr<Menu>& menu() const { return menu_; }
  double length() const { return length_; }
  const std::string& symbol() const { return symbol_; }
  const std::string& accessibilityDescription() const { return accessibilityDescription_; }

 private:
  template <typename Predicate>
  bool chooseRow(Predicate predicate) {
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

  double length_;
  SimulatedDispatch& dispatch_;
  SimulatedFaults& faults_;
  std::shared_ptr<Menu> menu_;
  bool menuIsOpen_ = false;
  std::size_t rowsWhenSet_ = 0;
  std::string symbol_;
  std::string accessibilityDescription_;
};

class SimulatedStatusBar final : public StatusBar {
 public:
  SimulatedStatusBar(SimulatedDispatch& dispatch, SimulatedFaults& faults)
      : dispatch_(dispatch), faults_(faults) {}

  std::shared_ptr<StatusItem> makeStatusItem(double length) override {
    auto item = std::make_shared<SimulatedStatusItem>(length, dispatch_, faults_);
    item_ = item;
    return item;
  }

  /// The newest item in the bar; null when there is none.
  std::shared_ptr<SimulatedStatusItem> item() const { return item_.lock(); }

 private:
  SimulatedDispatch& dispatch_;
  SimulatedFaults& faults_;
  std::weak_ptr<SimulatedStatusItem> item_;
};

}  // namespace zephyx
