#pragma once

#include <QtCore/QTimer>

namespace zephyx {

/// Memory that large copies have left behind. A copy passes through several blocks of its size, one
/// after the other; getting each from the system anew costs more than all that is done with it.
/// So freed blocks stay with the process while copies are made, and go back soon after.
class FreedMemory {
 public:
  /// Before the first other thread starts.
  static void keep();

  FreedMemory();

  /// Puts the giving back off until nothing was copied for a while. Main thread.
  void giveBackLater() { timer_.start(); }

 private:
  QTimer timer_;
};

}  // namespace zephyx
