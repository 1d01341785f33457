#include "Platform/Linux/Views/ViewWindow.h"

#include <QtGui/QCloseEvent>
#include <QtGui/QPainter>
#include <utility>

namespace zephyx {

ViewWindow::ViewWindow(std::shared_ptr<View> view) : ViewHost(std::move(view), nullptr) {}

void ViewWindow::setBackground(QColor color) {
  background_ = color;
  setAttribute(Qt::WA_TranslucentBackground, color.alpha() < 255);
  update();
}

void ViewWindow::viewFrameDidChange() {
  setViewSize({static_cast<double>(width()), static_cast<double>(height())});
}

void ViewWindow::resizeEvent(QResizeEvent*) {
  setViewSize({static_cast<double>(width()), static_cast<double>(height())});
}

void ViewWindow::paintEvent(QPaintEvent*) {
  if (background_.alpha() > 0) QPainter(this).fillRect(rect(), background_);
}

void ViewWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (onCloseRequest) onCloseRequest();
}

}  // namespace zephyx
