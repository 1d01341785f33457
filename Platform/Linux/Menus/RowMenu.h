#pragma once

#include <QtWidgets/QMenu>

namespace zephyx {

/// The toolkit's menu, with rows that are views. It looks as the application's palette says, also
/// after that has changed.
class RowMenu final : public QMenu {
  Q_OBJECT

 public:
  RowMenu();
  ~RowMenu() override;

  /// Takes in what a row has become; at once when it is open.
  void relayout();
  /// Where the keyboard is going from row to row.
  bool isGoingUp() const { return isGoingUp_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void applyLook();

  bool isGoingUp_ = false;
};

}  // namespace zephyx
