#pragma once

#include <optional>

class QFocusEvent;
class QKeyEvent;
class QWidget;

namespace zephyx {

/// What keys do in a view, in a menu and in a window alike.
namespace keyboardFocus {

/// Space, Return and Enter without modifiers.
bool isClick(const QKeyEvent& event);
/// Only then does a view show that it has the keyboard.
bool isFromKeyboard(const QFocusEvent& event);
/// Down goes to the next widget (true), Up to the one before; nothing for other keys.
std::optional<bool> step(const QKeyEvent& event);
/// True when the keyboard can go to it.
bool isReachable(const QWidget& widget);

}  // namespace keyboardFocus

}  // namespace zephyx
