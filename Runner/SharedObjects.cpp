#include "Runner/SharedObjects.h"

#include <cassert>

namespace zephyx {
namespace {
SharedObjects* currentObjects = nullptr;
}

SharedObjects::SharedObjects(Platform& platform) : platform_(platform) {
  assert(!currentObjects);
  currentObjects = this;
}

SharedObjects::~SharedObjects() {
  while (!objects_.empty()) objects_.pop_back();
  currentObjects = nullptr;
}

SharedObjects& SharedObjects::current() {
  assert(currentObjects);
  return *currentObjects;
}

}  // namespace zephyx
