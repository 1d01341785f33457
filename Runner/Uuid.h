#pragma once

#include <string>

namespace zephyx {

/// A new random UUID in its canonical text form, upper case. Any thread.
std::string makeUuid();

}  // namespace zephyx
