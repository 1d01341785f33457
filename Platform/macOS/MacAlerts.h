#pragma once

#include "Platform/Alert.h"

namespace zephyx {

/// NSAlert, in a modal loop of its own.
class MacAlerts final : public Alerts {
 public:
  void show(const Alert& alert, std::function<void(std::size_t)> completion) override;
};

}  // namespace zephyx
