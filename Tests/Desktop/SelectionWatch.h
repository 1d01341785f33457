#pragma once

#include <chrono>
#include <cstdint>
#include <string>

struct xcb_connection_t;

namespace zephyx {

/// Tells when the clipboard gets a new owner, as any program could find out.
class SelectionWatch {
 public:
  explicit SelectionWatch(const std::string& display);
  SelectionWatch(const SelectionWatch&) = delete;
  SelectionWatch& operator=(const SelectionWatch&) = delete;
  ~SelectionWatch();

  /// Throws std::runtime_error when nothing is copied within ten seconds.
  std::chrono::steady_clock::time_point waitForCopy();

 private:
  xcb_connection_t* connection_;
  std::uint8_t firstEvent_ = 0;
};

}  // namespace zephyx
