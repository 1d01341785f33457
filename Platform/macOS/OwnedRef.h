#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace zephyx {

/// Owns one count of a Core Foundation object (`Ref` is its pointer type), or nothing.
template <typename Ref>
class OwnedRef {
 public:
  OwnedRef() = default;
  /// Takes over the count that the caller has: results of functions named Create or Copy.
  [[nodiscard]] static OwnedRef adopt(Ref ref) { return OwnedRef(ref); }
  /// Adds a count of its own: results of functions named Get, parameters of callbacks.
  [[nodiscard]] static OwnedRef retain(Ref ref) {
    if (ref) CFRetain(ref);
    return OwnedRef(ref);
  }

  OwnedRef(OwnedRef&& other) noexcept : ref_(std::exchange(other.ref_, nullptr)) {}
  OwnedRef& operator=(OwnedRef&& other) noexcept {
    std::swap(ref_, other.ref_);
    return *this;
  }
  OwnedRef(const OwnedRef& other) : OwnedRef(retain(other.ref_)) {}
  OwnedRef& operator=(const OwnedRef& other) { return *this = OwnedRef(other); }
  ~OwnedRef() {
    if (ref_) CFRelease(ref_);
  }

  /// Not owned by the caller; null when empty.
  Ref get() const { return ref_; }
  explicit operator bool() const { return ref_ != nullptr; }
  /// Hands the count to the caller, who must release it.
  [[nodiscard]] Ref release() { return std::exchange(ref_, nullptr); }

 private:
  explicit OwnedRef(Ref ref) : ref_(ref) {}

  Ref ref_ = nullptr;
};

}  // namespace zephyx
