#include "Platform/Linux/Views/SwitchWidget.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <algorithm>
#include <utility>

#include "Platform/Linux/Views/KeyboardFocus.h"
#include "Platform/Linux/Views/ViewLook.h"
#include "Platform/Switch.h"

namespace zephyx {
namespace {

constexpr QSizeF trackSize(38, 22);
constexpr double knobInset = 2;
constexpr double focusMargin = 3;
constexpr int flipMilliseconds = 140;

QColor mixed(const QColor& from, const QColor& to, double share) {
  const auto part = [share](float a, float b) { return a + (b - a) * static_cast<float>(share); };
  return QColor::fromRgbF(part(from.redF(), to.redF()), part(from.greenF(), to.greenF()),
                          part(from.blueF(), to.blueF()), part(from.alphaF(), to.alphaF()));
}

}  // namespace

SwitchWidget::SwitchWidget(std::shared_ptr<Switch> control) : control_(std::move(control)) {
  setCheckable(true);
  setFocusPolicy(Qt::TabFocus);
  knob_.setDuration(flipMilliseconds);
  knob_.setEasingCurve(QEasingCurve::InOutQuad);
  knob_.setStartValue(0.0);
  knob_.setEndValue(0.0);
  connect(&knob_, &QVariantAnimation::valueChanged, this, [this] { update(); });
}

void SwitchWidget::showView() {
  setEnabled(control_->isEnabled());
  const bool isOn = control_->isOn();
  if (isOn != isChecked()) {
    setChecked(isOn);
    const auto from = knob_.currentValue();
    knob_.stop();
    knob_.setStartValue(from);
    knob_.setEndValue(isOn ? 1.0 : 0.0);
    knob_.start();
    if (!isVisible()) knob_.setCurrentTime(flipMilliseconds);
  }
  update();
}

void SwitchWidget::nextCheckState() {
  control_->toggle();
}

void SwitchWidget::keyPressEvent(QKeyEvent* event) {
  if (keyboardFocus::isClick(*event)) return click();
  if (const auto next = keyboardFocus::step(*event)) {
    focusNextPrevChild(*next);
  } else {
    QAbstractButton::keyPressEvent(event);
  }
}

void SwitchWidget::focusInEvent(QFocusEvent* event) {
  showsFocus_ = keyboardFocus::isFromKeyboard(*event);
  QAbstractButton::focusInEvent(event);
}

void SwitchWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!isEnabled()) painter.setOpacity(0.45);
  const double share = knob_.currentValue().toDouble();
  QRectF track({}, trackSize);
  track.moveCenter(QRectF(rect()).center());
  const double radius = track.height() / 2;

  painter.setPen(Qt::NoPen);
  painter.setBrush(mixed(viewLook::color(color::tertiaryLabel, palette()),
                         viewLook::color(color::accent, palette()), share));
  painter.drawRoundedRect(track, radius, radius);

  const double travel = track.width() - track.height();
  const double along = layoutDirection() == Qt::RightToLeft ? 1 - share : share;
  const QPointF middle(track.left() + radius + travel * along, track.center().y());
  const double knobRadius = radius - knobInset;
  painter.setBrush(QColor(0, 0, 0, 50));
  painter.drawEllipse(middle + QPointF(0, 0.7), knobRadius + 0.4, knobRadius + 0.4);
  painter.setBrush(isDown() ? QColor(0xe4, 0xe4, 0xe8) : QColor(Qt::white));
  painter.drawEllipse(middle, knobRadius, knobRadius);

  if (showsFocus_ && hasFocus()) {
    const auto around = track.adjusted(-focusMargin, -focusMargin, focusMargin, focusMargin)
                            .intersected(QRectF(rect()));
    viewLook::drawFocusRing(painter, around, around.height() / 2, palette());
  }
}

}  // namespace zephyx
