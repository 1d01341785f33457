#pragma once

#include <QtWidgets/QWidget>
#include <memory>

#include "Platform/Linux/Views/ViewCoordinates.h"
#include "Platform/Linux/Views/ViewWidget.h"

namespace zephyx {

class View;

/// Shows a view of the host's own drawing.
class CanvasWidget final : public QWidget, public ViewWidget {
  Q_OBJECT

 public:
  explicit CanvasWidget(std::shared_ptr<View> view);

  QWidget& widget() override { return *this; }
  void showView() override;

  View& view() { return *view_; }
  /// As the keyboard and assistive technology do it.
  void clickInTheMiddle();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  ViewCoordinates coordinates() const;
  void setHovered(bool hovered);

  const std::shared_ptr<View> view_;
  bool isHovered_ = false;
  bool isPressed_ = false;
  bool showsFocus_ = false;
};

}  // namespace zephyx
