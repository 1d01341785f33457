#pragma once

#include <QtCore/QPointer>
#include <QtCore/QPropertyAnimation>
#include <QtWidgets/QGraphicsOpacityEffect>
#include <functional>
#include <memory>
#include <vector>

#include "Platform/Linux/Views/ViewWidget.h"
#include "Platform/View.h"

namespace zephyx {

/// Shows a view and all that is in it with widgets, and follows its changes. Main thread.
class LinuxViewPeer final : public ViewPeer {
 public:
  LinuxViewPeer(std::shared_ptr<View> view, QWidget& parent);
  ~LinuxViewPeer() override;

  QWidget& widget() { return shown_->widget(); }
  /// Puts the widgets in here where they belong after a change of the layout direction.
  void placeChildren();
  /// Tells this view and all in it that colours have changed.
  void appearanceDidChange();

  /// Of the root: the view's frame changed, which only what holds the root can show.
  std::function<void()> onFrameChange;

  void frameDidChange() override;
  void childrenDidChange() override;
  void propertiesDidChange() override;
  void alphaDidChange(const std::optional<Animation>& animation) override;
  void setNeedsDisplay() override;

 private:
  LinuxViewPeer(std::shared_ptr<View> view, LinuxViewPeer& parent);
  void place();

  const std::shared_ptr<View> view_;
  LinuxViewPeer* const parent_;  ///< null for the root
  ViewWidget* const shown_;      ///< its widget belongs to the parent's
  const QPointer<QWidget> guard_;
  QPointer<QGraphicsOpacityEffect> opacity_;
  QPropertyAnimation fade_;
  std::vector<std::shared_ptr<LinuxViewPeer>> children_;
  Registration registration_;
};

}  // namespace zephyx
