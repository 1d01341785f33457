#include "Tests/Simulated/SimulatedViewController.h"

#include <utility>

#include "Tests/Simulated/SimulatedEngine.h"

namespace zephyx {

SimulatedViewController::SimulatedViewController(std::shared_ptr<SimulatedEngine> engine)
    : engine_(std::move(engine)) {}

std::shared_ptr<FlutterEngine> SimulatedViewController::engine() const {
  return engine_;
}

void SimulatedViewController::setInWindow(bool isInWindow) {
  engine_->isInWindow = isInWindow;
}

std::shared_ptr<VisualEffectView> SimulatedViewController::addVisualEffectView() {
  effectViews_.push_back(std::make_shared<SimulatedVisualEffectView>());
  return effectViews_.back();
}

}  // namespace zephyx
