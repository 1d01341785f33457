#pragma once

#include <png.h>

#include <csetjmp>

namespace zephyx {

/// What libpng is given to report by. Warnings are about pixels that it can make sense of all the
/// same; an error jumps to where the caller has called `setjmp`.
inline void ignorePngWarning(png_structp, png_const_charp) {}

[[noreturn]] inline void jumpOnPngError(png_structp png, png_const_charp) {
  png_longjmp(png, 1);
}

}  // namespace zephyx
