#pragma once

#include <QtQuick/QQuickWindow>
#include <functional>

namespace zephyx {

/// The toolkit's side of a host window: no frame of the window manager, so it moves by its
/// background and resizes by its edges itself. Main thread.
class HostWindow final : public QQuickWindow {
 public:
  void setMovableByBackground(bool movable) { isMovable_ = movable; }
  void setResizable(bool resizable) { isResizable_ = resizable; }

  /// The user or the window manager asks to close it; it stays open until somebody hides it.
  std::function<void()> onCloseRequest;

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  Qt::Edges edgesAt(QPointF position) const;
  bool pressed(QMouseEvent& event);

  bool isMovable_ = false;
  bool isResizable_ = false;
  bool showsResizeCursor_ = false;
};

}  // namespace zephyx
