#pragma once

#include <QtWidgets/QWidget>
#include <memory>

#include "Platform/Linux/Views/LinuxViewPeer.h"

namespace zephyx {

/// Holds the root of a view tree; see its two kinds, `ViewRow` and `ViewWindow`. Main thread.
class ViewHost : public QWidget {
  Q_OBJECT

 public:
  View& view() const { return *view_; }

 protected:
  ViewHost(std::shared_ptr<View> view, QWidget* parent);

  /// The host changed the root's frame.
  virtual void viewFrameDidChange() = 0;
  /// Gives the root this size.
  void setViewSize(Size size);

  void changeEvent(QEvent* event) override;

 private:
  void showAppearanceSoon();

  const std::shared_ptr<View> view_;
  LinuxViewPeer root_;
  bool isSettingSize_ = false;
  bool isAppearanceDue_ = false;
};

}  // namespace zephyx
