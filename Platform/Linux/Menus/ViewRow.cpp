#include "Platform/Linux/Menus/ViewRow.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "Platform/Linux/Menus/RowMenu.h"
#include "Platform/Linux/Views/KeyboardFocus.h"

namespace zephyx {

ViewRow::ViewRow(std::shared_ptr<View> view, RowMenu& menu)
    : ViewHost(std::move(view), nullptr),
      menu_(menu),
      minimumWidth_(this->view().frame().size.width) {
  // A menu hands the keyboard to the row, and the row to what is in it.
  setFocusPolicy(Qt::TabFocus);
  setMinimumSize(sizeHint());
  resize(sizeHint());
  setViewSize(this->view().frame().size);
}

QSize ViewRow::sizeHint() const {
  const auto& size = view().frame().size;
  return {static_cast<int>(std::ceil(minimumWidth_)), static_cast<int>(std::ceil(size.height))};
}

void ViewRow::viewFrameDidChange() {
  const auto size = view().frame().size;
  // Only a width that is not the menu's own says something new.
  if (size.width != width()) minimumWidth_ = size.width;
  setMinimumSize(sizeHint());
  menu_.relayout();
  setViewSize({std::max(minimumWidth_, static_cast<double>(width())), size.height});
}

void ViewRow::resizeEvent(QResizeEvent*) {
  setViewSize({static_cast<double>(width()), view().frame().size.height});
}

void ViewRow::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  // In a row without a stop the keyboard rests.
  if (keyboardFocus::isFromKeyboard(*event)) focusStop(!menu_.isGoingUp());
}

bool ViewRow::focusNextPrevChild(bool next) {
  return focusStop(next) || QWidget::focusNextPrevChild(next);
}

bool ViewRow::focusStop(bool next) {
  auto stops = findChildren<QWidget*>();
  stops.removeIf([](const QWidget* each) { return !keyboardFocus::isReachable(*each); });
  // In the order of reading: the tree's own order is that of drawing.
  const auto place = [this](const QWidget* each) {
    const auto middle = each->mapTo(this, each->rect().center());
    return std::pair(middle.y(), layoutDirection() == Qt::RightToLeft ? -middle.x() : middle.x());
  };
  std::sort(stops.begin(), stops.end(),
            [&](const QWidget* a, const QWidget* b) { return place(a) < place(b); });
  if (!next) std::reverse(stops.begin(), stops.end());
  const auto current = std::find_if(stops.begin(), stops.end(),
                                    [](const QWidget* each) { return each->hasFocus(); });
  const auto wanted = current == stops.end() ? stops.begin() : current + 1;
  if (wanted == stops.end()) return false;
  (*wanted)->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  return true;
}

void ViewRow::keyPressEvent(QKeyEvent* event) {
  // The menu would take them for a choice of the row, and close.
  if (keyboardFocus::isClick(*event)) return;
  QWidget::keyPressEvent(event);
}

void ViewRow::mousePressEvent(QMouseEvent* event) {
  event->accept();
}

void ViewRow::mouseReleaseEvent(QMouseEvent* event) {
  event->accept();
}

}  // namespace zephyx
