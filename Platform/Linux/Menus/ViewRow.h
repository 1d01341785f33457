#pragma once

#include "Platform/Linux/Views/ViewHost.h"

namespace zephyx {

class RowMenu;

/// A view tree as a row of a menu: as wide as the menu, as high as the tree.
class ViewRow final : public ViewHost {
  Q_OBJECT

 public:
  ViewRow(std::shared_ptr<View> view, RowMenu& menu);

  QSize sizeHint() const override;

 protected:
  void viewFrameDidChange() override;
  void resizeEvent(QResizeEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  /// Puts the keyboard on the next stop in the row; false when there is none.
  bool focusStop(bool next);

  RowMenu& menu_;
  double minimumWidth_;
};

}  // namespace zephyx
