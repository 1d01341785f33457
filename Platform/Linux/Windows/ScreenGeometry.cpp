#include "Platform/Linux/Windows/ScreenGeometry.h"

#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

#include "Platform/Linux/Windows/DesktopWatch.h"

namespace zephyx {

QScreen* screenUnderPointer() {
  auto* screen = QGuiApplication::screenAt(QCursor::pos());
  return screen ? screen : QGuiApplication::primaryScreen();
}

QRect availableGeometry(DesktopWatch& watch, const QScreen& screen) {
  // With several screens the toolkit takes the whole of each for available.
  if (QGuiApplication::screens().size() == 1) return screen.availableGeometry();
  const QRect available = watch.struts().availableIn(geometryInPixels(screen));
  const QPoint corner = screen.geometry().topLeft();
  const double ratio = screen.devicePixelRatio();
  return {corner + (available.topLeft() - corner) / ratio, available.size() / ratio};
}

QRect geometryInPixels(const QScreen& screen) {
  return {screen.geometry().topLeft(), screen.geometry().size() * screen.devicePixelRatio()};
}

}  // namespace zephyx
