#pragma once

#include <QtCore/QObject>
#include <memory>
#include <vector>

#include "Platform/Events.h"
#include "Platform/Linux/Input/KeyboardGrab.h"

namespace zephyx {

/// Events on their way to the toolkit's windows.
class LinuxEventMonitors final : public QObject, public EventMonitors {
 public:
  [[nodiscard]] Registration addLocalMonitor(std::uint64_t mask,
                                             std::function<bool(const Event&)> handler) override;
  [[nodiscard]] Registration captureKeyboard() override;

 private:
  struct Monitor {
    std::uint64_t mask;
    std::function<bool(const Event&)> handler;
    bool isRegistered = true;
  };
  using Monitors = std::vector<std::shared_ptr<Monitor>>;

  bool eventFilter(QObject* watched, QEvent* event) override;

  std::shared_ptr<Monitors> monitors_ = std::make_shared<Monitors>();
  std::shared_ptr<KeyboardGrab> keyboard_;  // made when it is first wanted
};

}  // namespace zephyx
