#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Platform/Menu.h"

namespace zephyx {

class SimulatedDispatch;
class SimulatedFaults;

class SimulatedStatusItem final : public StatusItem {
 public:
  SimulatedStatusItem(double length, SimulatedDispatch& dispatch, SimulatedFaults& faults)
      : length_(length), dispatch_(dispatch), faults_(faults) {}
  ~SimulatedStatusItem() override;

  void setImage(const std::string& symbol, const std::string& accessibilityDescription) override;
  void setMenu(std::shared_ptr<Menu> menu) override;
  void cancelTrackingWithoutAnimation() override;
  void performClick() override;

  /// The user opens the menu.
  void openMenu();
  bool menuIsOpen() const { return menuIsOpen_; }
  /// The user picks the row with this action, or with this title, in the open menu. False, and
  /// nothing done, when there is no such row that can be
  /// chosen.
  bool choose(const std::string& action);
  bool chooseTitle(const std::string& title);
  /// As the open menu shows them.
  std::vector<std::string> shownRows() const;

  const std::shared_ptr<Menu>& menu() const { return menu_; }
  double length() const { return length_; }
  const std::string& symbol() const { return symbol_; }
  const std::string& accessibilityDescription() const { return accessibilityDescription_; }

 private:
  template <typename Predicate>
  bool chooseRow(Predicate predicate);

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

  std::shared_ptr<StatusItem> makeStatusItem(double length) override;

  /// The newest item in the bar; null when there is none.
  std::shared_ptr<SimulatedStatusItem> item() const { return item_.lock(); }

 private:
  SimulatedDispatch& dispatch_;
  SimulatedFaults& faults_;
  std::weak_ptr<SimulatedStatusItem> item_;
};

}  // namespace zephyx
