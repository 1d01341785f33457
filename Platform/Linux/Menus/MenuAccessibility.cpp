#include "Platform/Linux/Menus/MenuAccessibility.h"

#include <QtGui/QAccessible>
#include <QtGui/QAction>
#include <QtWidgets/QAccessibleWidget>
#include <QtWidgets/QWidgetAction>

#include "Platform/Linux/Menus/RowMenu.h"
#include "Platform/Linux/Menus/ViewRow.h"

namespace zephyx {
namespace {

QWidget* viewOf(const QAction* action) {
  const auto* withWidget = qobject_cast<const QWidgetAction*>(action);
  return withWidget ? withWidget->defaultWidget() : nullptr;
}

/// The toolkit's own interface to a menu knows nothing of what is in rows with views.
class AccessibleMenu final : public QAccessibleWidget {
 public:
  explicit AccessibleMenu(RowMenu& menu) : QAccessibleWidget(&menu, QAccessible::PopupMenu) {}

  // By the number of its action: so the toolkit names the row that it tells about.
  int childCount() const override { return static_cast<int>(menu().actions().size()); }
  QAccessibleInterface* child(int index) const override {
    auto* action = menu().actions().value(index);
    if (!action) return nullptr;
    if (auto* view = viewOf(action)) return QAccessible::queryAccessibleInterface(view);
    return QAccessible::queryAccessibleInterface(action);
  }
  int indexOfChild(const QAccessibleInterface* sought) const override {
    for (int index = 0; index < childCount(); ++index) {
      if (child(index) == sought) return index;
    }
    return -1;
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    const auto* action = menu().actionAt(menu().mapFromGlobal(QPoint(x, y)));
    return child(static_cast<int>(menu().actions().indexOf(action)));
  }
  QAccessibleInterface* focusChild() const override {
    auto* focused = menu().focusWidget();
    if (focused && focused != &menu()) return QAccessible::queryAccessibleInterface(focused);
    return child(static_cast<int>(menu().actions().indexOf(menu().activeAction())));
  }

 private:
  RowMenu& menu() const { return *static_cast<RowMenu*>(object()); }
};

/// A row without a view.
class AccessibleRow final : public QAccessibleObject, public QAccessibleActionInterface {
 public:
  explicit AccessibleRow(QAction& action) : QAccessibleObject(&action) {}

  QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(&menu());
  }
  int childCount() const override { return 0; }
  QAccessibleInterface* child(int) const override { return nullptr; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }

  QAccessible::Role role() const override {
    return action().isSeparator() ? QAccessible::Separator : QAccessible::MenuItem;
  }
  QAccessible::State state() const override {
    QAccessible::State state;
    state.invisible = !action().isVisible() || !menu().isVisible();
    state.disabled = !action().isEnabled();
    state.focusable = !action().isSeparator() && action().isEnabled();
    state.focused = menu().activeAction() == &action();
    state.checkable = action().isCheckable();
    state.checked = action().isChecked();
    return state;
  }
  QString text(QAccessible::Text kind) const override {
    // A title, and from a tabulator on the keys that do the same.
    auto title = action().text().section(QLatin1Char('\t'), 0, 0);
    switch (kind) {
      case QAccessible::Name:
        return title.replace(QLatin1String("&&"), QLatin1String("&"));
      case QAccessible::Accelerator:
        return action().text().section(QLatin1Char('\t'), 1).trimmed();
      case QAccessible::Description:
        // Where there is none, the toolkit gives the title.
        return action().toolTip() == action().iconText() ? QString() : action().toolTip();
      default:
        return {};
    }
  }
  QRect rect() const override {
    const auto place = menu().actionGeometry(&action());
    return {menu().mapToGlobal(place.topLeft()), place.size()};
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                : nullptr;
  }
  QStringList actionNames() const override {
    return state().focusable ? QStringList{pressAction()} : QStringList();
  }
  void doAction(const QString& name) override {
    if (name != pressAction() || !state().focusable) return;
    menu().close();
    action().trigger();
  }
  QStringList keyBindingsForAction(const QString&) const override {
    return {text(QAccessible::Accelerator)};
  }

 private:
  QAction& action() const { return *static_cast<QAction*>(object()); }
  RowMenu& menu() const { return *static_cast<RowMenu*>(object()->parent()); }
};

QAccessibleInterface* accessibleOf(const QString&, QObject* object) {
  if (auto* menu = qobject_cast<RowMenu*>(object)) return new AccessibleMenu(*menu);
  if (auto* row = qobject_cast<ViewRow*>(object)) {
    return new QAccessibleWidget(row, QAccessible::Grouping);
  }
  auto* action = qobject_cast<QAction*>(object);
  if (action && qobject_cast<RowMenu*>(action->parent())) return new AccessibleRow(*action);
  return nullptr;
}

}  // namespace

void installMenuAccessibility() {
  QAccessible::installFactory(accessibleOf);  // once, however often it is asked to
}

}  // namespace zephyx
