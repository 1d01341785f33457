#include "Platform/Linux/Views/CanvasWidget.h"

#include <QtGui/QAccessible>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <utility>

#include "Platform/Linux/Views/KeyboardFocus.h"
#include "Platform/Linux/Views/PainterCanvas.h"
#include "Platform/Linux/Views/ViewAccessibility.h"
#include "Platform/Linux/Views/ViewLook.h"
#include "Platform/View.h"

namespace zephyx {
namespace {

constexpr double focusRingRadius = 6;

}  // namespace

CanvasWidget::CanvasWidget(std::shared_ptr<View> view) : view_(std::move(view)) {
  installViewAccessibility();
}

void CanvasWidget::showView() {
  // A click leaves the keyboard where it is.
  setFocusPolicy(view_->acceptsClicks() ? Qt::TabFocus : Qt::NoFocus);
  if (QAccessible::isActive() && !view_->accessibilityValue().empty()) {
    QAccessibleValueChangeEvent change(this, QString::fromStdString(view_->accessibilityValue()));
    QAccessible::updateAccessibility(&change);
  }
  update();
}

ViewCoordinates CanvasWidget::coordinates() const {
  return {view_->bounds().size, layoutDirection()};
}

void CanvasWidget::clickInTheMiddle() {
  const auto view = view_;
  if (!view->acceptsClicks()) return;
  const auto bounds = view->bounds();
  view->clicked({bounds.midX(), bounds.midY()});
}

void CanvasWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const auto here = coordinates();
  PainterCanvas canvas(painter, here, palette());
  view_->draw(canvas);
  if (showsFocus_ && hasFocus()) {
    viewLook::drawFocusRing(painter, rect(), focusRingRadius, palette());
  }
}

void CanvasWidget::setHovered(bool hovered) {
  if (std::exchange(isHovered_, hovered) == hovered) return;
  const auto view = view_;
  if (hovered) {
    view->mouseEntered();
  } else {
    view->mouseExited();
  }
}

void CanvasWidget::enterEvent(QEnterEvent*) {
  setHovered(true);
}

void CanvasWidget::leaveEvent(QEvent*) {
  setHovered(false);
}

void CanvasWidget::hideEvent(QHideEvent*) {
  // The toolkit tells nothing about a pointer over a widget that goes with its window.
  isPressed_ = false;
  setHovered(false);
}

void CanvasWidget::mousePressEvent(QMouseEvent* event) {
  isPressed_ = view_->acceptsClicks() && event->button() == Qt::LeftButton;
  event->setAccepted(isPressed_);
}

void CanvasWidget::mouseReleaseEvent(QMouseEvent* event) {
  const bool wasPressed = std::exchange(isPressed_, false);
  event->setAccepted(wasPressed);
  if (!wasPressed || !rect().contains(event->position().toPoint())) return;
  const auto view = view_;
  view->clicked(coordinates().toHost(event->position()));
}

void CanvasWidget::keyPressEvent(QKeyEvent* event) {
  if (view_->acceptsClicks() && keyboardFocus::isClick(*event)) return clickInTheMiddle();
  if (const auto next = keyboardFocus::step(*event)) {
    focusNextPrevChild(*next);
  } else {
    QWidget::keyPressEvent(event);
  }
}

void CanvasWidget::focusInEvent(QFocusEvent* event) {
  showsFocus_ = keyboardFocus::isFromKeyboard(*event);
  QWidget::focusInEvent(event);
}

}  // namespace zephyx
