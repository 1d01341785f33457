#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zephyx {

class View;

/// Modifier flags of events and key equivalents.
namespace eventModifier {
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
}  // namespace eventModifier

/// One row of a menu, as data. The platform shows it and follows its changes through `onChange`.
/// Main thread.
class MenuItem {
 public:
  struct Properties {
    std::string title;
    std::string keyEquivalent;  ///< UTF-8, one character; empty for none
    std::uint64_t keyEquivalentModifierMask = eventModifier::command;
    bool isOn = false;  ///< shown with a check mark
    bool isHidden = false;
    bool isEnabled = true;  ///< whether it can be chosen; a row with a view always can
    std::string toolTip;    ///< shown while the pointer rests on the row; empty for none
    bool operator==(const Properties&) const = default;
  };

  static std::shared_ptr<MenuItem> separator() {
    auto item = std::make_shared<MenuItem>("", "", nullptr);
    item->isSeparator_ = true;
    return item;
  }

  /// A row that shows `view`, which answers the user itself. Its title is not shown.
  static std::shared_ptr<MenuItem> withView(std::string title, std::shared_ptr<View> view) {
    auto item = std::make_shared<MenuItem>(std::move(title), "", nullptr);
    item->view_ = std::move(view);
    return item;
  }

  /// `action` names what the row does; `perform` does it when the row is chosen.
  MenuItem(std::string title, std::string action, std::function<void()> perform)
      : action_(std::move(action)), perform_(std::move(perform)) {
    properties_.title = std::move(title);
  }

  const std::string& action() const { return action_; }
  bool isSeparator() const { return isSeparator_; }
  /// Null for a row that shows its title. As wide as the menu while it is open, at least as wide as
  /// it was when it was handed over.
  const std::shared_ptr<View>& view() const { return view_; }
  const Properties& properties() const { return properties_; }

  template <typename Change>
  void update(Change change) {
    auto next = properties_;
    change(next);
    if (next == properties_) return;
    properties_ = std::move(next);
    if (onChange) onChange();
  }

  void setTitle(const std::string& title) {
    update([&](Properties& p) { p.title = title; });
  }
  void setKeyEquivalent(const std::string& key, std::uint64_t mask) {
    update([&](Properties& p) {
      p.keyEquivalent = key;
      p.keyEquivalentModifierMask = mask;
    });
  }

  void perform() const {
    if (perform_ && properties_.isEnabled) perform_();
  }

  /// Set by the platform that shows the menu; called after every change of the properties.
  std::function<void()> onChange;

 private:
  std::string action_;
  std::function<void()> perform_;
  std::shared_ptr<View> view_;
  bool isSeparator_ = false;
  Properties properties_;
};

class Menu;

/// Told about a menu's life on the screen. Main thread.
class MenuDelegate {
 public:
  virtual ~MenuDelegate() = default;
  virtual void menuNeedsUpdate(Menu& menu) = 0;  ///< before it opens
  virtual void menuWillOpen(Menu& menu) = 0;
  virtual void menuDidClose(Menu& menu) = 0;
};

/// A menu as data; fixed once it has been given to a status item.
class Menu {
 public:
  explicit Menu(MenuDelegate* delegate) : delegate_(delegate) {}

  void addItem(std::shared_ptr<MenuItem> item) { items_.push_back(std::move(item)); }
  const std::vector<std::shared_ptr<MenuItem>>& items() const { return items_; }

  /// Null when there is none. Outlives the menu.
  MenuDelegate* delegate() const { return delegate_; }

 private:
  MenuDelegate* delegate_;
  std::vector<std::shared_ptr<MenuItem>> items_;
};

/// The icon in the system's status bar and the menu that opens from it. Main thread.
class StatusItem {
 public:
  virtual ~StatusItem() = default;

  /// A system symbol by name, shown as a template image.
  virtual void setImage(const std::string& symbol, const std::string& accessibilityDescription) = 0;
  virtual void setMenu(std::shared_ptr<Menu> menu) = 0;
  /// Closes the open menu at once.
  virtual void cancelTrackingWithoutAnimation() = 0;
  /// As if the user had clicked the icon; but where the keyboard works the views in the menu's
  /// rows, it is again where it was when the menu was last closed by the host.
  virtual void performClick() = 0;
};

class StatusBar {
 public:
  virtual ~StatusBar() = default;
  /// `length` -2 is the square length. The item leaves the bar when it is dropped.
  virtual std::shared_ptr<StatusItem> makeStatusItem(double length) = 0;
};

}  // namespace zephyx
