#pragma once

#include <string>

#include "Channel/Value.h"

namespace zephyx {

/// A method name and its one argument (null for none).
struct MethodCall {
  std::string method;
  Value arguments;
  bool operator==(const MethodCall&) const = default;
};

}  // namespace zephyx
