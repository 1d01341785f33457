#pragma once

#include <QtCore/QRect>

class QScreen;

namespace zephyx {

class DesktopWatch;

/// The screen that the pointer is on; null without a screen.
QScreen* screenUnderPointer();

/// What docks leave of a screen. Main thread.
QRect availableGeometry(DesktopWatch& watch, const QScreen& screen);

/// The screen in the server's pixels: the toolkit scales a screen's size but leaves its corner
/// where the server has it.
QRect geometryInPixels(const QScreen& screen);

}  // namespace zephyx
