#include "Platform/Linux/Views/ViewHost.h"

#include <QtCore/QEvent>
#include <cmath>
#include <utility>

namespace zephyx {

ViewHost::ViewHost(std::shared_ptr<View> view, QWidget* parent)
    : QWidget(parent), view_(std::move(view)), root_(view_, *this) {
  setAccessibleName(QString::fromStdString(view_->accessibilityLabel()));
  root_.onFrameChange = [this] {
    if (!isSettingSize_) viewFrameDidChange();
  };
}

void ViewHost::setViewSize(Size size) {
  isSettingSize_ = true;
  view_->setFrame({view_->frame().origin, size});
  isSettingSize_ = false;
  root_.widget().setGeometry(0, 0, static_cast<int>(std::ceil(size.width)),
                             static_cast<int>(std::ceil(size.height)));
}

void ViewHost::showAppearanceSoon() {
  // The widgets in here get their colours after this one.
  if (std::exchange(isAppearanceDue_, true)) return;
  QMetaObject::invokeMethod(
      this,
      [this] {
        isAppearanceDue_ = false;
        root_.appearanceDidChange();
      },
      Qt::QueuedConnection);
}

void ViewHost::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::FontChange:
      showAppearanceSoon();
      break;
    case QEvent::LayoutDirectionChange:
      root_.placeChildren();
      showAppearanceSoon();
      break;
    default:
      break;
  }
}

}  // namespace zephyx
