#include "Platform/Linux/Views/SliderWidget.h"

#include <QtCore/QSignalBlocker>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionSlider>
#include <cmath>
#include <utility>

#include "Platform/Linux/Views/KeyboardFocus.h"
#include "Platform/Slider.h"

namespace zephyx {
namespace {

/// The toolkit's sliders have whole numbers.
constexpr int steps = 1000;

}  // namespace

SliderWidget::SliderWidget(std::shared_ptr<Slider> slider)
    : QSlider(Qt::Horizontal), slider_(std::move(slider)) {
  setRange(0, steps);
  setSingleStep(steps / 50);
  setPageStep(steps / 10);
  connect(this, &QSlider::valueChanged, this,
          [view = slider_](int value) { view->move(double(value) / steps); });
}

void SliderWidget::showView() {
  setEnabled(slider_->isEnabled());
  const int shown = static_cast<int>(std::lround(slider_->value() * steps));
  if (shown == value()) return;
  const QSignalBlocker blocker(this);
  setValue(shown);
}

void SliderWidget::mousePressEvent(QMouseEvent* event) {
  QStyleOptionSlider option;
  initStyleOption(&option);
  const auto handle =
      style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
  if (event->button() == Qt::LeftButton && !handle.contains(event->position().toPoint())) {
    // The handle comes to the pointer, and from there it is dragged.
    const auto groove =
        style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, this);
    const int place = qRound(event->position().x()) - groove.left() - handle.width() / 2;
    setValue(QStyle::sliderValueFromPosition(minimum(), maximum(), place,
                                             groove.width() - handle.width(), option.upsideDown));
  }
  QSlider::mousePressEvent(event);
}

void SliderWidget::keyPressEvent(QKeyEvent* event) {
  if (const auto next = keyboardFocus::step(*event)) {
    focusNextPrevChild(*next);
  } else {
    QSlider::keyPressEvent(event);
  }
}

}  // namespace zephyx
