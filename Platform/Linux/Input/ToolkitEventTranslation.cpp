#include "Platform/Linux/Input/ToolkitEventTranslation.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>

#include "Platform/Linux/Input/KeyCodes.h"

namespace zephyx {
namespace {

std::uint64_t modifierFlags(Qt::KeyboardModifiers modifiers) {
  std::uint64_t flags = 0;
  if (modifiers & Qt::ShiftModifier) flags |= eventModifier::shift;
  if (modifiers & Qt::ControlModifier) flags |= eventModifier::control;
  if (modifiers & Qt::AltModifier) flags |= eventModifier::option;
  if (modifiers & Qt::MetaModifier) flags |= eventModifier::command;
  return flags;
}

/// Pressing one is no key press of its own, also where it switches to another layout: alone, or as
/// the second of two.
bool isModifierKey(int key, std::uint16_t code) {
  if (isModifierKeyCode(code)) return true;
  switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
      return true;
    default:
      return false;
  }
}

std::optional<Event> mouseEvent(EventType type, const QEvent& event, bool leftButton) {
  if (!leftButton) return std::nullopt;
  return Event{type, modifierFlags(static_cast<const QMouseEvent&>(event).modifiers()), 0};
}

}  // namespace

std::optional<Event> hostEvent(const QEvent& event) {
  switch (event.type()) {
    case QEvent::KeyPress: {
      const auto& key = static_cast<const QKeyEvent&>(event);
      const auto code = macKeyCodeFromX(static_cast<int>(key.nativeScanCode()));
      if (!code || isModifierKey(key.key(), *code)) return std::nullopt;
      return Event{EventType::keyDown, modifierFlags(key.modifiers()), *code, key.isAutoRepeat()};
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      return mouseEvent(EventType::leftMouseDown, event,
                        static_cast<const QMouseEvent&>(event).button() == Qt::LeftButton);
    case QEvent::MouseButtonRelease:
      return mouseEvent(EventType::leftMouseUp, event,
                        static_cast<const QMouseEvent&>(event).button() == Qt::LeftButton);
    case QEvent::MouseMove:
      return mouseEvent(EventType::leftMouseDragged, event,
                        static_cast<const QMouseEvent&>(event).buttons() & Qt::LeftButton);
    default:
      return std::nullopt;
  }
}

}  // namespace zephyx
