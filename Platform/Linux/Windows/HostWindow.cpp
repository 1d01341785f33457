#include "Platform/Linux/Windows/HostWindow.h"

#include <QtGui/QCloseEvent>
#include <QtGui/QMouseEvent>

namespace zephyx {
namespace {

/// How far from an edge a press still takes hold of it.
constexpr double gripWidth = 5;

Qt::CursorShape resizeCursor(Qt::Edges edges) {
  if (edges == (Qt::LeftEdge | Qt::TopEdge) || edges == (Qt::RightEdge | Qt::BottomEdge)) {
    return Qt::SizeFDiagCursor;
  }
  if (edges == (Qt::RightEdge | Qt::TopEdge) || edges == (Qt::LeftEdge | Qt::BottomEdge)) {
    return Qt::SizeBDiagCursor;
  }
  return edges & (Qt::LeftEdge | Qt::RightEdge) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

}  // namespace

bool HostWindow::event(QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress) return pressed(*static_cast<QMouseEvent*>(event));
  if (event->type() == QEvent::MouseMove && isResizable_) {
    const auto* move = static_cast<QMouseEvent*>(event);
    const auto edges = edgesAt(move->position());
    if (edges && move->buttons() == Qt::NoButton) {
      setCursor(resizeCursor(edges));
      showsResizeCursor_ = true;
    } else if (showsResizeCursor_) {
      unsetCursor();
      showsResizeCursor_ = false;
    }
  }
  return QQuickWindow::event(event);
}

bool HostWindow::pressed(QMouseEvent& event) {
  if (event.button() == Qt::LeftButton) {
    const auto edges = edgesAt(event.position());
    if (edges && startSystemResize(edges)) return true;
  }
  const bool handled = QQuickWindow::event(&event);
  if (event.button() == Qt::LeftButton && isMovable_ && !event.isAccepted()) startSystemMove();
  return handled;
}

void HostWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (onCloseRequest) onCloseRequest();
}

Qt::Edges HostWindow::edgesAt(QPointF position) const {
  Qt::Edges edges;
  if (!isResizable_) return edges;
  if (position.x() < gripWidth) edges |= Qt::LeftEdge;
  if (position.x() >= width() - gripWidth) edges |= Qt::RightEdge;
  if (position.y() < gripWidth) edges |= Qt::TopEdge;
  if (position.y() >= height() - gripWidth) edges |= Qt::BottomEdge;
  return edges;
}

}  // namespace zephyx
