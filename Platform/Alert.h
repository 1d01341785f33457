#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace zephyx {

/// A question to the user.
struct Alert {
  std::string message;
  std::string informativeText;
  /// At least one. Return presses the first, Escape the last.
  std::vector<std::string> buttons;
  bool operator==(const Alert&) const = default;
};

/// Main thread.
class Alerts {
 public:
  virtual ~Alerts() = default;
  /// Brings the question to the front, with the keyboard, above all windows. An open menu of the
  /// host would stand in its way: the caller closes it first. The host's other windows may be deaf
  /// until the user answers; timers and queues go on. `completion` gets the index of the button, on
  /// the main thread, after this call has returned; never, when the program ends first.
  virtual void show(const Alert& alert, std::function<void(std::size_t)> completion) = 0;
};

}  // namespace zephyx
