#include "Platform/Linux/LinuxSystemLog.h"

#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <string>

namespace zephyx {

void LinuxSystemLog::log(std::string_view line) {
  timeval now{};
  gettimeofday(&now, nullptr);
  tm local{};
  localtime_r(&now.tv_sec, &local);
  char stamp[32];
  const auto length = std::strftime(stamp, sizeof stamp, "%F %T", &local);

  std::string text(stamp, length);
  const auto milliseconds = std::to_string(1000 + now.tv_usec / 1000);
  text.append(".").append(milliseconds, 1);
  text.append(" zephyx[").append(std::to_string(getpid())).append("] ");
  const auto start = text.size();
  text.append(line);
  std::replace(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), '\n', ' ');
  text.push_back('\n');

  // One write per line keeps the lines of several threads and processes whole.
  [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
}

}  // namespace zephyx
