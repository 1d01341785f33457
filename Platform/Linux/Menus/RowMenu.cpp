#include "Platform/Linux/Menus/RowMenu.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QActionEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QPalette>

#include "Platform/Linux/Menus/MenuAccessibility.h"

namespace zephyx {
namespace {

// Background, text, selection, selected text.
constexpr const char* look = R"(
QMenu { background: %1; color: %2; border: 1px solid rgba(128, 128, 140, 90); padding: 6px 0; }
QMenu::item { padding: 6px 10px; margin: 0 6px; border-radius: 5px; }
QMenu::item:selected { background: %3; color: %4; }
QMenu::item:disabled { color: #80808a; }
QMenu::separator { height: 1px; background: rgba(128, 128, 140, 90); margin: 6px 14px; }
QMenu::indicator { width: 14px; height: 14px; left: 6px; }
)";

}  // namespace

RowMenu::RowMenu() {
  installMenuAccessibility();
  applyLook();
}

RowMenu::~RowMenu() {
  // Rows that go hand the keyboard on to others, which ask the menu about it.
  clear();
}

void RowMenu::applyLook() {
  // Colours that a style sheet takes from the palette stay as they were at first.
  const auto palette = QGuiApplication::palette();
  auto wanted = QString::fromLatin1(look);
  for (const auto role :
       {QPalette::Window, QPalette::WindowText, QPalette::Highlight, QPalette::HighlightedText}) {
    wanted = wanted.arg(palette.color(role).name());
  }
  if (wanted != styleSheet()) setStyleSheet(wanted);
}

void RowMenu::changeEvent(QEvent* event) {
  QMenu::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) applyLook();
}

void RowMenu::relayout() {
  if (actions().isEmpty()) return;
  // The menu does not watch the sizes of widgets in it; after a change of any row it asks for all.
  QActionEvent change(QEvent::ActionChanged, actions().constFirst());
  QCoreApplication::sendEvent(this, &change);
}

void RowMenu::keyPressEvent(QKeyEvent* event) {
  isGoingUp_ = event->key() == Qt::Key_Up || event->key() == Qt::Key_Backtab;
  QMenu::keyPressEvent(event);
}

}  // namespace zephyx
