#include "Platform/Linux/Views/KeyboardFocus.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QWidget>

namespace zephyx::keyboardFocus {

bool isClick(const QKeyEvent& event) {
  const auto key = event.key();
  return (event.modifiers() & ~Qt::KeypadModifier) == 0 &&
         (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter);
}

bool isFromKeyboard(const QFocusEvent& event) {
  return event.reason() == Qt::TabFocusReason || event.reason() == Qt::BacktabFocusReason;
}

std::optional<bool> step(const QKeyEvent& event) {
  if (event.key() != Qt::Key_Up && event.key() != Qt::Key_Down) return std::nullopt;
  return event.key() == Qt::Key_Down;
}

bool isReachable(const QWidget& widget) {
  return (widget.focusPolicy() & Qt::TabFocus) && widget.isEnabled() && widget.isVisible();
}

}  // namespace zephyx::keyboardFocus
