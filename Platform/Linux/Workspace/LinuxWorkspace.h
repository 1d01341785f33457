#pragma once

#include <QtCore/QElapsedTimer>
#include <memory>

#include "Platform/Linux/Input/ToolkitEvents.h"
#include "Platform/Linux/Workspace/DesktopEntries.h"
#include "Platform/Linux/Workspace/WindowServer.h"
#include "Platform/Workspace.h"

namespace zephyx {

/// Applications as the X server and the window manager show them, named by their desktop entries.
/// Made on the main thread.
class LinuxWorkspace : public Workspace {
 public:
  LinuxWorkspace();

  std::shared_ptr<RunningApplication> frontmostApplication() const override;
  bool usesCooperativeActivation() const override { return false; }
  void openUrl(const std::string& url) override;
  void activateFileViewerSelecting(const std::string& path) override;

  /// Reads what applications are called, so that the first hot key does not have to. Any thread.
  void prepare() const { entries_.prefetch(); }

  /// The application of a running process; null when it has ended. It is active while any of its
  /// windows is. Any thread.
  std::shared_ptr<RunningApplication> applicationForProcess(int process) const;

 private:
  bool noticeActiveWindow(const xcb_generic_event_t& event);
  xcb_window_t activeWindowOnMainThread() const;
  xcb_window_t activeWindowWithPatience() const;
  std::shared_ptr<RunningApplication> describe(WindowServer::WindowOfProcess target,
                                               xcb_window_t window) const;

  std::shared_ptr<WindowServer> windows_ = std::make_shared<WindowServer>();
  mutable DesktopEntries entries_;
  xcb_atom_t activeWindowAtom_ = XCB_NONE;
  // Between two windows there is none for a moment; the main thread must not wait for it to pass.
  mutable xcb_window_t lastActiveWindow_ = XCB_NONE;
  mutable QElapsedTimer sinceNoneActive_;  // invalid while a window is active
  ToolkitEvents events_;
};

}  // namespace zephyx
