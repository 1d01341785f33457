#pragma once

#include <QtGui/QColor>
#include <functional>

#include "Platform/Linux/Views/ViewHost.h"

namespace zephyx {

/// A view tree as the whole content of a top-level window.
class ViewWindow final : public ViewHost {
  Q_OBJECT

 public:
  explicit ViewWindow(std::shared_ptr<View> view);

  /// Transparent colours need a visual with alpha: to be called before the window is made.
  void setBackground(QColor color);

  /// The user or the window manager asks to close it; it stays open until somebody hides it.
  std::function<void()> onCloseRequest;

 protected:
  void viewFrameDidChange() override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  QColor background_;
};

}  // namespace zephyx
