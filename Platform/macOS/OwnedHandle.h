#pragma once

#include <utility>

namespace zephyx {

/// Owns a handle that the system gives out and takes back by a function of its own: a Carbon
/// reference, an IOKit object. A value-initialised `Handle` means none. `end` is that function.
template <typename Handle, auto end>
class OwnedHandle {
 public:
  OwnedHandle() = default;
  /// Takes `handle` over.
  explicit OwnedHandle(Handle handle) : handle_(handle) {}
  OwnedHandle(OwnedHandle&& other) noexcept : handle_(std::exchange(other.handle_, Handle{})) {}
  OwnedHandle& operator=(OwnedHandle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  OwnedHandle(const OwnedHandle&) = delete;
  OwnedHandle& operator=(const OwnedHandle&) = delete;
  ~OwnedHandle() { reset(); }

  Handle get() const { return handle_; }
  explicit operator bool() const { return handle_ != Handle{}; }
  void reset() {
    if (*this) end(std::exchange(handle_, Handle{}));
  }
  /// Where a system function stores a new handle; what was owned before is ended first.
  Handle* out() {
    reset();
    return &handle_;
  }

 private:
  Handle handle_{};
};

}  // namespace zephyx
