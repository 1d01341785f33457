#include "Platform/Linux/Windows/LinuxScreens.h"

#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

#include "Platform/Linux/Windows/Coordinates.h"
#include "Platform/Linux/Windows/DesktopWatch.h"
#include "Platform/Linux/Windows/ScreenGeometry.h"

namespace zephyx {
std::vector<Screen> LinuxScreens::screens() const {
  std::vector<Screen> screens;
  for (const QScreen* screen : QGuiApplication::screens()) {
    screens.push_back({coordinates::toHost(screen->geometry()),
                       coordinates::toHost(availableGeometry(watch_, *screen))});
  }
  return screens;
}

int LinuxScreens::mainScreenIndex() const {
  const auto screens = QGuiApplication::screens();
  if (screens.empty()) return -1;
  const auto active = watch_.activeWindow();
  if (active == XCB_NONE) return 0;
  const QPoint middle = watch_.geometryOf(active).center();
  for (int index = 0; index < screens.size(); ++index) {
    if (geometryInPixels(*screens[index]).contains(middle)) return index;
  }
  return 0;
}

Point LinuxScreens::mouseLocation() const {
  return coordinates::toHost(QCursor::pos());
}

}  // namespace zephyx
