#include "Platform/Linux/Views/ViewAccessibility.h"

#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>

#include "Platform/Linux/Views/CanvasWidget.h"
#include "Platform/Linux/Views/SymbolWidget.h"
#include "Platform/View.h"

namespace zephyx {
namespace {

/// A view of the host's own drawing.
class AccessibleView final : public QAccessibleWidget {
 public:
  explicit AccessibleView(CanvasWidget& shown) : QAccessibleWidget(&shown) {}

  QAccessible::Role role() const override {
    const auto& view = shown().view();
    if (view.acceptsClicks()) return QAccessible::Button;
    if (!view.accessibilityValue().empty()) return QAccessible::Indicator;
    return view.accessibilityLabel().empty() ? QAccessible::Client : QAccessible::Grouping;
  }
  QString text(QAccessible::Text kind) const override {
    // Buttons have no value to ask for.
    const bool isValue = kind == QAccessible::Value ||
                         (kind == QAccessible::Description && shown().view().acceptsClicks());
    if (!isValue) return QAccessibleWidget::text(kind);
    return QString::fromStdString(shown().view().accessibilityValue());
  }
  QStringList actionNames() const override {
    auto names = QAccessibleWidget::actionNames();
    if (shown().view().acceptsClicks()) names.prepend(pressAction());
    return names;
  }
  void doAction(const QString& name) override {
    if (name == pressAction()) {
      shown().clickInTheMiddle();
    } else {
      QAccessibleWidget::doAction(name);
    }
  }

 private:
  CanvasWidget& shown() const { return *static_cast<CanvasWidget*>(object()); }
};

/// One without a name is an ornament, which is passed over.
class AccessibleSymbol final : public QAccessibleWidget {
 public:
  explicit AccessibleSymbol(SymbolWidget& symbol) : QAccessibleWidget(&symbol) {}

  QAccessible::Role role() const override {
    return widget()->accessibleName().isEmpty() ? QAccessible::Whitespace : QAccessible::Graphic;
  }
};

QAccessibleInterface* accessibleOf(const QString&, QObject* object) {
  if (auto* canvas = qobject_cast<CanvasWidget*>(object)) return new AccessibleView(*canvas);
  if (auto* symbol = qobject_cast<SymbolWidget*>(object)) {
    return new AccessibleSymbol(*symbol);
  }
  return nullptr;
}

}  // namespace

void installViewAccessibility() {
  QAccessible::installFactory(accessibleOf);  // once, however often it is asked to
}

}  // namespace zephyx
