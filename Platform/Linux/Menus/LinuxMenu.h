#pragma once

#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Platform/Menu.h"

class QAction;

namespace zephyx {

class RowMenu;

/// A menu's data as one of the toolkit's menus, which follows the data. Main thread.
class LinuxMenu {
 public:
  explicit LinuxMenu(std::shared_ptr<Menu> menu);
  ~LinuxMenu();

  /// Where the keyboard is when the menu opens.
  enum class KeyboardPlace { none, asBefore };

  /// Tells the menu's delegate and opens at `position`.
  void popUp(QPoint position, KeyboardPlace place);
  void close();
  bool isOpen() const;

  /// "Shift+Super+E", or nothing for a row without a key equivalent; for one that cannot be chosen,
  /// why, if that is said in a few words.
  static std::string shortcutHint(const MenuItem::Properties& properties);

 private:
  class KeyEquivalents;
  struct Row {
    std::shared_ptr<MenuItem> item;
    QAction* action;  ///< owned by the toolkit's menu
  };

  void putKeyboardOn(QWidget& control);
  void addRow(const std::shared_ptr<MenuItem>& item);
  QAction* makeViewAction(const std::shared_ptr<View>& view);
  static void show(const MenuItem& item, QAction& action);

  const std::shared_ptr<Menu> menu_;
  std::vector<Row> rows_;
  std::unique_ptr<RowMenu> widget_;
  std::unique_ptr<KeyEquivalents> keyEquivalents_;
  QPointer<QWidget> keyboardPlace_;  ///< the control that had the keyboard when the host closed it
};

}  // namespace zephyx
