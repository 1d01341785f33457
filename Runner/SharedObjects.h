#pragma once

#include <memory>
#include <utility>
#include <vector>

namespace zephyx {

class Platform;

/// The process-wide objects of one platform: each is made when it is first asked for and destroyed
/// with this object, in reverse order of creation. One lives at a time; `T::shared()` reaches it.
/// Main thread.
class SharedObjects {
 public:
  explicit SharedObjects(Platform& platform);
  SharedObjects(const SharedObjects&) = delete;
  SharedObjects& operator=(const SharedObjects&) = delete;
  ~SharedObjects();

  static SharedObjects& current();

  /// The one object of class `T`, made as `T(platform)`.
  template <typename T>
  T& get() {
    for (const auto& [key, object] : objects_) {
      if (key == &keyOf<T>) return *static_cast<T*>(object.get());
    }
    auto object = std::make_shared<T>(platform_);
    objects_.emplace_back(&keyOf<T>, object);
    return *object;
  }

 private:
  template <typename T>
  static constexpr char keyOf = 0;

  Platform& platform_;
  std::vector<std::pair<const void*, std::shared_ptr<void>>> objects_;
};

}  // namespace zephyx
