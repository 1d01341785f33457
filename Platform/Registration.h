#pragma once

#include <functional>
#include <utility>

namespace zephyx {

/// Something that was registered and ends when this object is dropped: an observer, a monitor, a
/// timer, a hot key, a channel handler. Move-only. The end runs once, on the thread that drops it,
/// which must be the thread that registered.
class [[nodiscard]] Registration {
 public:
  Registration() = default;
  explicit Registration(std::function<void()> end) : end_(std::move(end)) {}
  Registration(Registration&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
  Registration& operator=(Registration&& other) noexcept {
    if (this != &other) {
      reset();
      end_ = std::exchange(other.end_, nullptr);
    }
    return *this;
  }
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;
  ~Registration() { reset(); }

  /// Ends the registration now. May be called from inside the registered callback.
  void reset() {
    if (auto end = std::exchange(end_, nullptr)) end();
  }

  /// True while something is registered.
  explicit operator bool() const { return static_cast<bool>(end_); }

 private:
  std::function<void()> end_;
};

}  // namespace zephyx
