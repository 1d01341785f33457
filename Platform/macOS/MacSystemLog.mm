#import "Platform/macOS/MacSystemLog.h"

#import <Foundation/Foundation.h>
#import <os/log.h>
#include <unistd.h>

#include <string>

#import "Platform/macOS/Strings.h"

namespace zephyx {

void MacSystemLog::log(std::string_view line) {
  static const auto systemLog = os_log_create("com.zephyx.app", "host");
  @autoreleasepool {
    // Not NSLog: from macOS 26 on it shows every text that was put into its format as <private>.
    os_log(systemLog, "%{public}@", nsString(line));
  }
  // One write per line keeps the lines of several threads whole.
  std::string text(line);
  text.push_back('\n');
  [[maybe_unused]] const auto written = write(STDERR_FILENO, text.data(), text.size());
}

}  // namespace zephyx
