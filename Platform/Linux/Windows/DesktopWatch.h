#pragma once

#include <QtCore/QObject>
#include <QtCore/QRect>
#include <deque>
#include <memory>

#include "Platform/Linux/Windows/DesktopStruts.h"
#include "Platform/Linux/X11.h"

class QSocketNotifier;

namespace zephyx {

/// What the window manager, the compositor and the trays tell, watched over a connection of its own
/// so that the toolkit's event masks stay as they are. Main thread.
class DesktopWatch final : public QObject {
  Q_OBJECT
  /// True while a compositor blends windows: without one, transparent pixels are black.
  Q_PROPERTY(bool composited READ composited NOTIFY compositedChanged)
  /// Whether the desktop has a place for the icon. True until there was time for one to come.
  Q_PROPERTY(bool hasTray READ hasTray NOTIFY hasTrayChanged)
  /// X11 programs alone can be seen here, through XWayland.
  Q_PROPERTY(bool waylandSession READ waylandSession CONSTANT)

 public:
  /// Connects to the display; null when there is none.
  static std::unique_ptr<DesktopWatch> open();
  ~DesktopWatch() override;

  /// Reports from now on. Needs the toolkit's event loop.
  void start();

  bool composited() const { return composited_; }
  bool hasTray() const { return hasEmbeddingTray_ || hasNotifierHost_ || isTrayAwaited_; }
  /// The other kind of tray, which is not the display's to tell about.
  void setHasNotifierHost(bool hasHost);
  static bool waylandSession();
  /// The icon's menu, for where there is no icon.
  Q_INVOKABLE void openMenu() { emit menuWanted(); }
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
  void hasTrayChanged();
  void menuWanted();
  void activeWindowChanged();
  void currentDesktopChanged();

 private:
  DesktopWatch();
  void readEvents();
  void keepQueuedEvents();
  void handleEvent(const xcb_generic_event_t& event);
  bool hasOwner(xcb_atom_t selection) const;
  void updateComposited();
  template <typename Change>
  void changeTray(Change change);

  X11Connection connection_;
  xcb_window_t clockWindow_ = XCB_NONE;
  xcb_atom_t compositorSelection_ = XCB_NONE;
  xcb_atom_t traySelection_ = XCB_NONE;
  std::uint8_t selectionEvent_ = 0;
  bool composited_ = false;
  bool hasEmbeddingTray_ = false;
  bool hasNotifierHost_ = false;
  bool isTrayAwaited_ = true;
  std::deque<XReply<xcb_generic_event_t>> pending_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace zephyx
