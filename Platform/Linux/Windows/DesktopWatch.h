#pragma once

#include <QtCore/QObject>
#include <QtCore/QRect>
#include <deque>
#include <memory>

#include "Platform/Linux/Windows/DesktopStruts.h"
#include "Platform/Linux/X11.h"

class QSocketNotifier;

namespace zephyx {

/// What the window manager and the compositor tell, watched over a connection of its own so that
/// the toolkit's event masks stay as they are. Main thread.
class DesktopWatch final : public QObject {
  Q_OBJECT
  /// True while a compositor blends windows: without one, transparent pixels are black.
  Q_PROPERTY(bool composited READ composited NOTIFY compositedChanged)

 public:
  /// Connects to the display; null when there is none.
  static std::unique_ptr<DesktopWatch> open();
  ~DesktopWatch() override;

  /// Reports from now on. Needs the toolkit's event loop.
  void start();

  bool composited() const { return composited_; }
  /// The window that the window manager calls active, XCB_NONE when there is none.
  xcb_window_t activeWindow();
  /// The window with the keyboard, as the server says: grabs do not change it.
  xcb_window_t focusWindow();
  std::uint32_t currentDesktop();
  /// In pixels of the whole display; empty when the window is gone.
  QRect geometryOf(xcb_window_t window);
  DesktopStruts struts();
  /// The server's clock now, for requests that window managers order by time.
  xcb_timestamp_t serverTime();

 signals:
  void compositedChanged();
  void activeWindowChanged();
  void currentDesktopChanged();

 private:
  DesktopWatch();
  void readEvents();
  void keepQueuedEvents();
  void handleEvent(const xcb_generic_event_t& event);
  void updateComposited();

  X11Connection connection_;
  xcb_window_t clockWindow_ = XCB_NONE;
  xcb_atom_t compositorSelection_ = XCB_NONE;
  std::uint8_t selectionEvent_ = 0;
  bool composited_ = false;
  std::deque<XReply<xcb_generic_event_t>> pending_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace zephyx
