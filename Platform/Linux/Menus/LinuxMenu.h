#pragma once

#include <QtCore/QPoint>
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

  /// Tells the menu's delegate and opens at `position`.
  void popUp(QPoint position);
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

  void addRow(const std::shared_ptr<MenuItem>& item);
  QAction* makeViewAction(const std::shared_ptr<View>& view);
  static void show(const MenuItem& item, QAction& action);

  const std::shared_ptr<Menu> menu_;
  std::vector<Row> rows_;
  std::unique_ptr<RowMenu> widget_;
  std::unique_ptr<KeyEquivalents> keyEquivalents_;
};

}  // namespace zephyx
