#include "Platform/Linux/Engines/ScreenProgram.h"

namespace zephyx {

/// Tests of single services have engines without programs.
std::unique_ptr<ScreenProgram> makeScreenProgram(const std::string&, ScreenServices) {
  return nullptr;
}

}  // namespace zephyx
