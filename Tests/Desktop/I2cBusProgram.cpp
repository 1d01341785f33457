// i2c_bus_program FOLDER LOG: device files of I²C buses with a display on each, in FOLDER. What is
// written to them stands in LOG, a line each: the bus, the chip's address
// and the bytes.

#define FUSE_USE_VERSION 35
#include <fuse3/fuse.h>
#include <linux/i2c-dev.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <thread>

namespace {

/// The number after "/i2c-" says what becomes of a write.
enum Bus { obeying = 1, failing = 2, hanging = 3, vanishing = 4 };
constexpr std::chrono::seconds hangTime{2};
constexpr unsigned displayChip = 0x37;

std::FILE* logFile;
std::atomic<bool> hasVanished{false};

int busOf(const char* path) {
  int bus = 0;
  if (std::sscanf(path, "/i2c-%d", &bus) != 1 || bus < obeying || bus > vanishing) return 0;
  return bus == vanishing && hasVanished ? 0 : bus;
}

int getAttributes(const char* path, struct stat* status, fuse_file_info*) {
  *status = {};
  const bool isRoot = std::strcmp(path, "/") == 0;
  if (!isRoot && !busOf(path)) return -ENOENT;
  status->st_mode = isRoot ? S_IFDIR | 0755 : S_IFREG | 0660;
  status->st_nlink = 1;
  return 0;
}

int openBus(const char* path, fuse_file_info* file) {
  if (!busOf(path)) return -ENOENT;
  file->fh = reinterpret_cast<std::uintptr_t>(new unsigned(0));
  file->direct_io = 1;
  file->nonseekable = 1;
  return 0;
}

/// The chip that an open file talks to.
unsigned& chipOf(const fuse_file_info* file) {
  return *reinterpret_cast<unsigned*>(file->fh);
}

int closeBus(const char*, fuse_file_info* file) {
  delete &chipOf(file);
  return 0;
}

int control(const char*, unsigned command, void* argument, fuse_file_info* file, unsigned, void*) {
  if (command != I2C_SLAVE) return -ENOTTY;
  const auto address = reinterpret_cast<std::uintptr_t>(argument);
  if (address != displayChip) return -EBUSY;
  chipOf(file) = static_cast<unsigned>(address);
  return 0;
}

int writeBytes(const char* path, const char* bytes, size_t size, off_t, fuse_file_info* file) {
  const int bus = busOf(path);
  std::string line;
  char part[64];
  std::snprintf(part, sizeof part, "%d %02x:", bus, chipOf(file));
  line = part;
  for (size_t i = 0; i < size; ++i) {
    std::snprintf(part, sizeof part, " %02x", static_cast<unsigned char>(bytes[i]));
    line += part;
  }
  std::fprintf(logFile, "%s\n", line.c_str());
  std::fflush(logFile);
  switch (bus) {
    case failing:
      return -EREMOTEIO;
    case hanging:
      std::this_thread::sleep_for(hangTime);
      return -ETIMEDOUT;
    case vanishing:
      hasVanished = true;
      return -ENODEV;
    default:
      return static_cast<int>(size);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  logFile = std::fopen(argv[2], "w");
  if (!logFile) return 2;
  // What has vanished is not there at the next look.
  char program[] = "i2c_bus_program", foreground[] = "-f", option[] = "-o",
       noCache[] = "entry_timeout=0,attr_timeout=0,negative_timeout=0";
  char* arguments[] = {program, argv[1], foreground, option, noCache, nullptr};
  fuse_operations operations{};
  operations.getattr = getAttributes;
  operations.open = openBus;
  operations.release = closeBus;
  operations.ioctl = control;
  operations.write = writeBytes;
  return fuse_main(5, arguments, &operations, nullptr);
}
