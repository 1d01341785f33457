#include "Platform/Linux/Views/ButtonWidget.h"

#include <QtGui/QGuiApplication>
#include <utility>

#include "Platform/Linux/Views/ViewLook.h"
#include "Platform/PushButton.h"

namespace zephyx {

ButtonWidget::ButtonWidget(std::shared_ptr<PushButton> button) : button_(std::move(button)) {
  setFocusPolicy(Qt::TabFocus);
  setAutoDefault(true);  // Return clicks it, too
  connect(this, &QPushButton::clicked, this, [view = button_] { view->click(); });
}

void ButtonWidget::showView() {
  auto title = QString::fromStdString(button_->title());
  title.replace(QLatin1Char('&'), QLatin1String("&&"));
  const auto look = viewLook::buttonLook(QGuiApplication::palette());
  if (look != styleSheet()) setStyleSheet(look);
  setText(title);
  setEnabled(button_->isEnabled());
}

}  // namespace zephyx
