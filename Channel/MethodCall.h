#pragma once

#include "Channel/MethodName.h"
#include "Channel/Value.h"

namespace zephyx {

/// A method name and its one argument (null for none).
struct MethodCall {
  MethodName method;
  Value arguments;
  bool operator==(const MethodCall& other) const {
    return method == other.method.text() && arguments == other.arguments;
  }
};

}  // namespace zephyx
