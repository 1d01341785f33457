#include "Platform/Linux/Displays/I2cChannel.h"

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <sys/ioctl.h>

#include <cerrno>

#include "Platform/Linux/FileDescriptor.h"

namespace zephyx {

std::int32_t I2cChannel::writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                                  BytesView bytes) {
  const FileDescriptor device(open(path_.c_str(), O_RDWR | O_CLOEXEC));
  if (!device) return errno;
  // EBUSY where a driver of the kernel's talks to the display.
  if (ioctl(device.get(), I2C_SLAVE, static_cast<unsigned long>(chipAddress)) < 0) return errno;
  // On the wire the data address is the first byte.
  Bytes message{static_cast<std::uint8_t>(dataAddress)};
  message.insert(message.end(), bytes.begin(), bytes.end());
  const auto written = write(device.get(), message.data(), message.size());
  if (written < 0) return errno;
  return static_cast<std::size_t>(written) == message.size() ? 0 : EIO;
}

}  // namespace zephyx
