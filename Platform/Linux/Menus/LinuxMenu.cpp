#include "Platform/Linux/Menus/LinuxMenu.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QAction>
#include <QtGui/QActionEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QKeySequence>
#include <QtWidgets/QWidgetAction>
#include <algorithm>
#include <utility>

#include "Platform/Linux/Input/XkbKeymap.h"
#include "Platform/Linux/Menus/RowMenu.h"
#include "Platform/Linux/Menus/ViewRow.h"
#include "Platform/Linux/Views/KeyboardFocus.h"
#include "Platform/View.h"

namespace zephyx {
namespace {

struct ModifierName {
  std::uint64_t flag;
  Qt::KeyboardModifier modifier;
  const char* name;
};
constexpr ModifierName modifierNames[] = {
    {eventModifier::control, Qt::ControlModifier, "Ctrl+"},
    {eventModifier::option, Qt::AltModifier, "Alt+"},
    {eventModifier::shift, Qt::ShiftModifier, "Shift+"},
    {eventModifier::command, Qt::MetaModifier, "Super+"},
};

struct KeyName {
  char16_t character;
  const char* name;
};
/// Key equivalents that are not characters to be printed, named as the toolkit names the keys.
constexpr KeyName keyNames[] = {
    {u' ', "Space"},  {u'\t', "Tab"},  {u'\r', "Return"}, {u'\x1b', "Esc"},   {u'\b', "Backspace"},
    {u'\x7f', "Del"}, {0xF700, "Up"},  {0xF701, "Down"},  {0xF702, "Left"},   {0xF703, "Right"},
    {0xF729, "Home"}, {0xF72B, "End"}, {0xF72C, "PgUp"},  {0xF72D, "PgDown"},
};
/// In characters; a longer one is a tool tip only.
constexpr std::size_t longestShownReason = 30;
constexpr char16_t firstFunctionKey = 0xF704;
constexpr char16_t lastFunctionKey = 0xF726;

QString keyName(const std::string& keyEquivalent) {
  const auto text = QString::fromStdString(keyEquivalent);
  if (text.size() != 1) return text.toUpper();
  const char16_t character = text[0].unicode();
  for (const auto& each : keyNames) {
    if (each.character == character) return QLatin1String(each.name);
  }
  if (character >= firstFunctionKey && character <= lastFunctionKey) {
    return QStringLiteral("F%1").arg(character - firstFunctionKey + 1);
  }
  return text.toUpper();
}

Qt::KeyboardModifiers modifiersOf(std::uint64_t mask) {
  Qt::KeyboardModifiers modifiers;
  for (const auto& each : modifierNames) {
    if (mask & each.flag) modifiers |= each.modifier;
  }
  return modifiers;
}

}  // namespace

/// Key equivalents belong to the open menu alone; as the toolkit's shortcuts they would be claimed
/// from the host's windows too. Where the layout in effect has not their letters, the keys of
/// another layout stand for them.
class LinuxMenu::KeyEquivalents final : public QObject {
 public:
  explicit KeyEquivalents(LinuxMenu& menu) : menu_(menu) {
    menu_.widget_->installEventFilter(this);
  }

  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return false;
    const auto* press = static_cast<QKeyEvent*>(event);
    const auto pressed = press->modifiers() & ~Qt::KeypadModifier;
    for (const auto& row : menu_.rows_) {
      const auto& wanted = row.item->properties();
      if (wanted.keyEquivalent.empty() || wanted.isHidden || !wanted.isEnabled) continue;
      if (pressed != modifiersOf(wanted.keyEquivalentModifierMask)) continue;
      if (!isKey(*press, wanted.keyEquivalent)) continue;
      menu_.close();
      row.action->trigger();
      return true;
    }
    return false;
  }

 private:
  bool isKey(const QKeyEvent& press, const std::string& keyEquivalent) const {
    const auto name = QKeySequence(press.key()).toString(QKeySequence::PortableText);
    if (name == keyName(keyEquivalent)) return true;
    const auto characters = QString::fromStdString(keyEquivalent).toUcs4();
    if (characters.size() != 1) return false;
    const auto key = keymap_.keyWithSymbol(xkb_utf32_to_keysym(characters.front()));
    return key && key->code == press.nativeScanCode();
  }

  LinuxMenu& menu_;
  XkbKeymap keymap_;
};

LinuxMenu::LinuxMenu(std::shared_ptr<Menu> menu)
    : menu_(std::move(menu)), widget_(std::make_unique<RowMenu>()) {
  widget_->setToolTipsVisible(true);
  for (const auto& item : menu_->items()) addRow(item);
  keyEquivalents_ = std::make_unique<KeyEquivalents>(*this);
  QObject::connect(widget_.get(), &QMenu::aboutToHide, widget_.get(), [menu = menu_] {
    if (auto* delegate = menu->delegate()) delegate->menuDidClose(*menu);
  });
}

LinuxMenu::~LinuxMenu() {
  for (const auto& row : rows_) row.item->onChange = nullptr;
}

void LinuxMenu::addRow(const std::shared_ptr<MenuItem>& item) {
  auto* action = item->view() ? makeViewAction(item->view()) : new QAction(widget_.get());
  show(*item, *action);
  item->onChange = [item = item.get(), action] { show(*item, *action); };
  rows_.push_back({item, action});
  widget_->addAction(action);
  if (item->view()) return;
  // A row that the pointer chooses takes the keyboard from a row with a view.
  QObject::connect(action, &QAction::hovered, widget_.get(), [menu = widget_.get()] {
    if (!menu->hasFocus()) menu->setFocus(Qt::PopupFocusReason);
  });
  // Choosing a row with a mark turns the mark; the data say what it is.
  QObject::connect(action, &QAction::triggered, action, [item, action = QPointer<QAction>(action)] {
    item->perform();  // may replace the menu
    if (action) show(*item, *action);
  });
}

QAction* LinuxMenu::makeViewAction(const std::shared_ptr<View>& view) {
  auto* action = new QWidgetAction(widget_.get());
  action->setDefaultWidget(new ViewRow(view, *widget_));
  return action;
}

void LinuxMenu::show(const MenuItem& item, QAction& action) {
  const auto& properties = item.properties();
  action.setSeparator(item.isSeparator());
  action.setVisible(!properties.isHidden);
  if (item.isSeparator()) return;
  auto title = QString::fromStdString(properties.title);
  title.replace(QLatin1Char('&'), QLatin1String("&&"));
  const auto hint = shortcutHint(properties);
  if (!hint.empty()) title += QStringLiteral("\t\u2003") + QString::fromStdString(hint);
  action.setText(title);
  action.setCheckable(properties.isOn);
  action.setChecked(properties.isOn);
  if (!item.view()) action.setEnabled(properties.isEnabled);
  action.setToolTip(QString::fromStdString(properties.toolTip));
}

std::string LinuxMenu::shortcutHint(const MenuItem::Properties& properties) {
  const auto& reason = properties.toolTip;
  const bool isShort = !reason.empty() && reason.size() <= longestShownReason;
  if (!properties.isEnabled && isShort) return reason;
  if (properties.keyEquivalent.empty()) return {};
  std::string hint;
  for (const auto& each : modifierNames) {
    if (properties.keyEquivalentModifierMask & each.flag) hint += each.name;
  }
  return hint + keyName(properties.keyEquivalent).toStdString();
}

void LinuxMenu::popUp(QPoint position, KeyboardPlace place) {
  if (auto* delegate = menu_->delegate()) {
    delegate->menuNeedsUpdate(*menu_);
    delegate->menuWillOpen(*menu_);
  }
  if (auto* focused = widget_->focusWidget()) focused->clearFocus();
  widget_->popup(position);
  auto* before = std::exchange(keyboardPlace_, nullptr).data();
  if (before && place == KeyboardPlace::asBefore) putKeyboardOn(*before);
}

void LinuxMenu::putKeyboardOn(QWidget& control) {
  if (!keyboardFocus::isReachable(control)) return;
  for (const auto& row : rows_) {
    const auto* view = qobject_cast<QWidgetAction*>(row.action);
    if (!view || !view->defaultWidget()->isAncestorOf(&control)) continue;
    widget_->setActiveAction(row.action);
    control.setFocus(Qt::TabFocusReason);
    return;
  }
}

void LinuxMenu::close() {
  auto* focused = widget_->focusWidget();
  keyboardPlace_ = focused != widget_.get() ? focused : nullptr;
  widget_->close();
}

bool LinuxMenu::isOpen() const {
  return widget_->isVisible();
}

}  // namespace zephyx
