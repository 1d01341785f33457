#pragma once

#include <memory>
#include <vector>

#include "Platform/Alert.h"

namespace zephyx {

class AlertWindow;
class DesktopWatch;
class WindowHints;

/// Each question is a window of its own; the host's other windows go on.
class LinuxAlerts final : public Alerts {
 public:
  LinuxAlerts(WindowHints& hints, DesktopWatch& watch);
  ~LinuxAlerts() override;

  void show(const Alert& alert, std::function<void(std::size_t)> completion) override;

 private:
  void forget(const AlertWindow& window);

  WindowHints& hints_;
  DesktopWatch& watch_;
  std::vector<std::unique_ptr<AlertWindow>> windows_;
};

}  // namespace zephyx
