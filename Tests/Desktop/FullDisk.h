#pragma once

#include <signal.h>
#include <sys/resource.h>
#include <sys/types.h>

#include <stdexcept>

namespace zephyx {

/// No file takes another byte while this lives: as on a disk without room, for this process or for
/// one that ignores the signal that comes with it (`env --ignore-signal=XFSZ PROGRAM`).
class FullDisk {
 public:
  explicit FullDisk(pid_t process = 0) : process_(process) {
    if (process_ == 0) signal(SIGXFSZ, SIG_IGN);
    if (prlimit(process_, RLIMIT_FSIZE, nullptr, &before_) != 0)
      throw std::runtime_error("no limit for the size of files");
    setLimit({.rlim_cur = 0, .rlim_max = before_.rlim_max});
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() { setLimit(before_); }

 private:
  void setLimit(const rlimit& limit) const { prlimit(process_, RLIMIT_FSIZE, &limit, nullptr); }

  const pid_t process_;
  rlimit before_{};
};

}  // namespace zephyx
