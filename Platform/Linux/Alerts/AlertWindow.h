#pragma once

#include <QtWidgets/QDialog>
#include <cstddef>

#include "Platform/Alert.h"

class QLabel;

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
  void changeEvent(QEvent* event) override;

 private:
  void applyLook();

  std::size_t lastButton_;
  bool isRounded_;
  QLabel* symbol_;
  QLabel* message_;
  QLabel* text_;
};

}  // namespace zephyx
