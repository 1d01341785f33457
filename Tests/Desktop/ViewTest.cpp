#include "Tests/Desktop/ViewTest.h"

#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <stdexcept>

namespace zephyx {

void ViewTest::SetUp() {
  VirtualDesktopOptions options;
  options.width = 800 * GetParam().scale;
  options.height = height_ * GetParam().scale;
  options.compositor = true;
  desktop_ = std::make_unique<VirtualDesktop>(options);
  desktop_->enter();
  qputenv("QT_SCALE_FACTOR", QByteArray::number(GetParam().scale));
  static char name[] = "desktop_view_tests";
  static char* arguments[] = {name, nullptr};
  platform_ = makePlatform(1, arguments);
  if (!platform_) throw std::runtime_error("another instance runs on the new desktop");
  if (GetParam().isMirrored) QApplication::setLayoutDirection(Qt::RightToLeft);
  input().movePointer(200 * GetParam().scale, 100 * GetParam().scale);
}

void ViewTest::TearDown() {
  platform_.reset();
  desktop_.reset();
}

QMenu* ViewTest::menu() {
  for (auto* widget : QApplication::topLevelWidgets()) {
    auto* menu = qobject_cast<QMenu*>(widget);
    if (menu && menu->isVisible()) return menu;
  }
  return nullptr;
}

bool ViewTest::menuIsOpen() {
  return menu() && desktop_->windows().describe(static_cast<WindowId>(menu()->winId())).viewable;
}

QWidget* ViewTest::shown(const std::string& name) {
  for (auto* widget : QApplication::allWidgets()) {
    if (widget->accessibleName().toStdString() == name && widget->isVisible()) return widget;
  }
  throw std::runtime_error("nothing on the screen is called " + name);
}

void ViewTest::pointAt(QPoint place) {
  input().movePointer(place.x() * GetParam().scale, place.y() * GetParam().scale);
}

void ViewTest::pointAt(const QWidget& widget) {
  pointAt(widget.mapToGlobal(widget.rect().center()));
}

void ViewTest::click(const QWidget& widget) {
  clickAt(widget.mapToGlobal(widget.rect().center()));
}

void ViewTest::clickAt(QPoint place) {
  pointAt(place);
  runFor(std::chrono::milliseconds(30));
  input().pressButton();
  runFor(std::chrono::milliseconds(20));
  input().releaseButton();
}

std::size_t ViewTest::pixels(const QWidget& widget) {
  const auto corner = widget.mapTo(widget.window(), QPoint());
  const auto picture = QGuiApplication::primaryScreen()
                           ->grabWindow(widget.window()->winId(), corner.x(), corner.y(),
                                        widget.width(), widget.height())
                           .toImage();
  return qHash(QByteArrayView(picture.constBits(), picture.sizeInBytes()));
}

}  // namespace zephyx
