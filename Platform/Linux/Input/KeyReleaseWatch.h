#pragma once

#include <QtCore/QSocketNotifier>
#include <functional>
#include <memory>

#include "Platform/Linux/X11.h"

namespace zephyx {

/// Calls `handler` when any keyboard lets go of a key, whoever has the keyboard, as long as this
/// object lives. On a connection of its own: the toolkit makes its own choice of input events on
/// the root window, which another choice on its connection would replace. Silent where the server
/// is too old to tell. Main thread.
class KeyReleaseWatch {
 public:
  /// `handler` must not delete this object.
  explicit KeyReleaseWatch(std::function<void()> handler);

 private:
  bool selectReleases();
  void readEvents();

  std::function<void()> handler_;
  X11Connection x11_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace zephyx
