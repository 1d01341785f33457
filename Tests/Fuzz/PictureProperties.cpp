#include "Platform/Linux/Pictures/LinuxImages.h"
#include "Platform/Linux/Pictures/PngChunks.h"
#include "Tests/Fuzz/FuzzTargets.h"
#include "Tests/Fuzz/ImageProperties.h"

namespace zephyx {

const char* brokenPictureProperty(BytesView bytes) {
  if (PngChunks::hasSignature(bytes)) return nullptr;
  return brokenImageProperty(LinuxImages().decode(bytes));
}

}  // namespace zephyx
