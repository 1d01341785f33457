#pragma once

#include <memory>
#include <utility>

namespace zephyx {

/// Makes closures that do nothing once their owner is gone. Keep it as the owner's LAST member, so
/// that it dies before everything that the closures use. Guarded closures return nothing and run on
/// the owner's own thread.
class LifetimeGuard {
 public:
  LifetimeGuard() : alive_(std::make_shared<char>()) {}
  LifetimeGuard(const LifetimeGuard&) = delete;
  LifetimeGuard& operator=(const LifetimeGuard&) = delete;

  template <typename Function>
  auto wrap(Function function) const {
    return [alive = std::weak_ptr<char>(alive_),
            function = std::move(function)](auto&&... arguments) mutable {
      if (!alive.expired()) function(std::forward<decltype(arguments)>(arguments)...);
    };
  }

 private:
  std::shared_ptr<char> alive_;
};

}  // namespace zephyx
