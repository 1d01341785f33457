#pragma once

#include <QtWidgets/QDialog>
#include <cstddef>

#include "Platform/Alert.h"

namespace zephyx {

/// A frameless card with a question and its buttons; its result is the index of the one that was
/// pressed. Main thread.
class AlertWindow final : public QDialog {
 public:
  /// Rounded corners need a compositor.
  AlertWindow(const Alert& alert, bool isRounded);

  /// Escape, or the window manager's way of closing.
  void reject() override;

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  std::size_t lastButton_;
  bool isRounded_;
};

}  // namespace zephyx
