#include "Channel/ChannelLog.h"

namespace zephyx {

void ChannelLog::report(std::string_view what, std::string_view method) const {
  if (!diagnostics) return;
  std::string line("[Channel] ");
  line.append(channel).append(": ").append(what);
  if (!method.empty()) line.append(": ").append(method);
  diagnostics(line);
}

}  // namespace zephyx
