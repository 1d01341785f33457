#include "Platform/Linux/Views/LinuxViewPeer.h"

#include <QtCore/QEasingCurve>
#include <QtWidgets/QWidget>
#include <algorithm>
#include <cmath>
#include <utility>

#include "Platform/Label.h"
#include "Platform/Linux/Views/ButtonWidget.h"
#include "Platform/Linux/Views/CanvasWidget.h"
#include "Platform/Linux/Views/LabelWidget.h"
#include "Platform/Linux/Views/SliderWidget.h"
#include "Platform/Linux/Views/SwitchWidget.h"
#include "Platform/Linux/Views/SymbolWidget.h"
#include "Platform/Linux/Views/ViewCoordinates.h"
#include "Platform/PushButton.h"
#include "Platform/Slider.h"
#include "Platform/Switch.h"
#include "Platform/SymbolImage.h"
#include "Platform/ViewVisitor.h"

namespace zephyx {
namespace {

/// Makes the widget for a kind of view.
class WidgetMaker final : public ViewVisitor {
 public:
  static ViewWidget* make(const std::shared_ptr<View>& view) {
    WidgetMaker maker(view);
    view->accept(maker);
    return maker.made_;
  }

  void visitView(View&) override { made_ = new CanvasWidget(view_); }
  void visitLabel(Label& label) override { made_ = new LabelWidget(sharing(label)); }
  void visitPushButton(PushButton& button) override { made_ = new ButtonWidget(sharing(button)); }
  void visitSlider(Slider& slider) override { made_ = new SliderWidget(sharing(slider)); }
  void visitSwitch(Switch& control) override { made_ = new SwitchWidget(sharing(control)); }
  void visitSymbolImage(SymbolImage& image) override { made_ = new SymbolWidget(sharing(image)); }

 private:
  explicit WidgetMaker(std::shared_ptr<View> view) : view_(std::move(view)) {}

  template <typename Kind>
  std::shared_ptr<Kind> sharing(Kind& visited) const {
    return {view_, &visited};
  }

  const std::shared_ptr<View> view_;
  ViewWidget* made_ = nullptr;
};

QEasingCurve curveOf(Animation::Timing timing) {
  if (timing == Animation::Timing::linear) return QEasingCurve(QEasingCurve::Linear);
  QEasingCurve curve(QEasingCurve::BezierSpline);
  curve.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
  return curve;
}

}  // namespace

LinuxViewPeer::LinuxViewPeer(std::shared_ptr<View> view, QWidget& parent)
    : view_(std::move(view)),
      parent_(nullptr),
      shown_(WidgetMaker::make(view_)),
      guard_(&shown_->widget()) {
  widget().setParent(&parent);
  registration_ = view_->attachPeer(*this);
  propertiesDidChange();
  alphaDidChange(std::nullopt);
  childrenDidChange();
}

LinuxViewPeer::LinuxViewPeer(std::shared_ptr<View> view, LinuxViewPeer& parent)
    : view_(std::move(view)),
      parent_(&parent),
      shown_(WidgetMaker::make(view_)),
      guard_(&shown_->widget()) {
  widget().setParent(&parent.widget());
  registration_ = view_->attachPeer(*this);
  place();
  propertiesDidChange();
  alphaDidChange(std::nullopt);
  childrenDidChange();
}

LinuxViewPeer::~LinuxViewPeer() {
  registration_.reset();
  children_.clear();
  if (!guard_) return;
  // The widget may be what is calling.
  guard_->hide();
  guard_->deleteLater();
}

void LinuxViewPeer::place() {
  if (!parent_) return;
  const ViewCoordinates coordinates(parent_->view_->bounds().size,
                                    parent_->widget().layoutDirection());
  widget().setGeometry(coordinates.pixelsFromHost(view_->frame()));
}

void LinuxViewPeer::placeChildren() {
  for (const auto& child : children_) {
    child->place();
    child->placeChildren();
  }
}

void LinuxViewPeer::frameDidChange() {
  if (!parent_) {
    if (onFrameChange) onFrameChange();
  } else {
    place();
  }
  // They hang from the top here, and stand on the bottom there.
  for (const auto& child : children_) child->place();
}

void LinuxViewPeer::childrenDidChange() {
  std::vector<std::shared_ptr<LinuxViewPeer>> kept;
  for (const auto& view : view_->children()) {
    const auto found = std::find_if(children_.begin(), children_.end(),
                                    [&](const auto& each) { return each && each->view_ == view; });
    if (found != children_.end()) {
      kept.push_back(std::move(*found));
    } else {
      kept.push_back(std::shared_ptr<LinuxViewPeer>(new LinuxViewPeer(view, *this)));
    }
    kept.back()->widget().raise();
  }
  // Those that are left over end with the old list.
  std::swap(children_, kept);
}

void LinuxViewPeer::propertiesDidChange() {
  auto& shown = widget();
  shown.setToolTip(QString::fromStdString(view_->toolTip()));
  shown.setAccessibleName(QString::fromStdString(view_->accessibilityLabel()));
  shown_->showView();
  shown.setVisible(!view_->isHidden());
}

void LinuxViewPeer::alphaDidChange(const std::optional<Animation>& animation) {
  fade_.stop();
  const double alpha = std::clamp(view_->alpha(), 0.0, 1.0);
  if (!opacity_) {
    if (alpha == 1) return;
    opacity_ = new QGraphicsOpacityEffect;
    opacity_->setOpacity(1);
    widget().setGraphicsEffect(opacity_);
    fade_.setTargetObject(opacity_);
    fade_.setPropertyName("opacity");
    // An effect costs a picture of its own each time.
    QObject::connect(&fade_, &QPropertyAnimation::finished, opacity_,
                     [effect = opacity_.data()] { effect->setEnabled(effect->opacity() < 1); });
  }
  if (!animation || animation->seconds <= 0 || !widget().isVisible()) {
    opacity_->setOpacity(alpha);
    opacity_->setEnabled(alpha < 1);
    return;
  }
  opacity_->setEnabled(true);
  fade_.setStartValue(opacity_->opacity());
  fade_.setEndValue(alpha);
  fade_.setDuration(static_cast<int>(std::lround(animation->seconds * 1000)));
  fade_.setEasingCurve(curveOf(animation->timing));
  fade_.start();
}

void LinuxViewPeer::setNeedsDisplay() {
  widget().update();
}

void LinuxViewPeer::appearanceDidChange() {
  view_->appearanceDidChange();
  shown_->showView();
  widget().update();
  for (const auto& child : std::vector(children_)) child->appearanceDidChange();
}

}  // namespace zephyx
