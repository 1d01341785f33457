#include "Platform/Linux/Audio/PulseLibrary.h"

#include <dlfcn.h>

namespace zephyx {

PulseLibrary::PulseLibrary()
    : library_(dlopen("libpulse.so.0", RTLD_LAZY | RTLD_LOCAL | RTLD_NODELETE)),
      isComplete_(library_ != nullptr) {}

PulseLibrary::Symbol PulseLibrary::find(const char* name) {
  void* address = library_ ? dlsym(library_, name) : nullptr;
  isComplete_ = isComplete_ && address;
  return {address};
}

}  // namespace zephyx
