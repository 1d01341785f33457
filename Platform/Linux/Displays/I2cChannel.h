#pragma once

#include <string>
#include <utility>

#include "Platform/Displays.h"

namespace zephyx {

/// A display's wire as a device file of the kernel's. The file is open during a write only: nothing
/// is left of a display that has gone.
class I2cChannel final : public DisplayChannel {
 public:
  explicit I2cChannel(std::string path) : path_(std::move(path)) {}

  /// 0 or a number of `errno`.
  std::int32_t writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                        BytesView bytes) override;

 private:
  const std::string path_;
};

}  // namespace zephyx
