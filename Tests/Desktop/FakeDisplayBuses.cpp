#include "Tests/Desktop/FakeDisplayBuses.h"

#include <sys/mount.h>
#include <unistd.h>

#include <sstream>
#include <stdexcept>

#include "Tests/Desktop/WaitFor.h"

namespace zephyx {

#ifdef I2C_BUS_PROGRAM
constexpr const char* executable = I2C_BUS_PROGRAM;
#else
constexpr const char* executable = nullptr;
#endif

std::string FakeDisplayBuses::missing() {
  if (!executable) return "built without libfuse3";
  if (access("/dev/fuse", R_OK | W_OK) != 0) return "no /dev/fuse";
  return {};
}

FakeDisplayBuses::FakeDisplayBuses() {
  std::filesystem::create_directories(folder_);
  ChildProcessOptions options;
  options.arguments = {executable, folder_.string(), log_.string()};
  process_ = ChildProcess(options);
  if (!waitFor([&] { return access(path(obeying).c_str(), R_OK | W_OK) == 0; })) {
    throw std::runtime_error("the buses do not appear");
  }
}

FakeDisplayBuses::~FakeDisplayBuses() {
  process_.terminate();
  // It has unmounted the folder itself unless it had to be ended.
  umount2(folder_.c_str(), MNT_DETACH);
}

std::vector<FakeDisplayBuses::Write> FakeDisplayBuses::writes(Bus bus) const {
  std::vector<Write> found;
  std::istringstream lines(readFile(log_));
  Write write;
  while (lines >> write.bus && std::getline(lines >> std::ws, write.bytes)) {
    if (write.bus == bus) found.push_back(write);
  }
  return found;
}

}  // namespace zephyx
