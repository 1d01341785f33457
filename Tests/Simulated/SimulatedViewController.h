#pragma once

#include "Platform/FlutterEngine.h"
#include "Tests/Simulated/SimulatedEngine.h"

namespace zephyx {

class SimulatedVisualEffectView final : public VisualEffectView {
 public:
  void setFrame(Rect newFrame) override { frame = newFrame; }
  void setCornerRadius(double radius) override { cornerRadius = radius; }
  void setHidden(bool hidden) override { isHidden = hidden; }

  Rect frame;
  double cornerRadius = 0;
  bool isHidden = true;
};

/// The picture of an engine; as large as the window that it is in.
class SimulatedViewController final : public FlutterViewController {
 public:
  explicit SimulatedViewController(std::shared_ptr<SimulatedEngine> engine)
      : engine_(std::move(engine)) {}

  std::shared_ptr<FlutterEngine> engine() const override { return engine_; }
  void makeBackgroundTransparent() override { hasTransparentBackground_ = true; }
  Rect viewBounds() const override { return {{0, 0}, size_}; }
  void setViewAlpha(double alpha) override { alpha_ = alpha; }
  std::shared_ptr<VisualEffectView> addVisualEffectView() override {
    effectViews_.push_back(std::make_shared<SimulatedVisualEffectView>());
    return effectViews_.back();
  }

  /// For the window that shows it.
  void setInWindow(bool isInWindow) { engine_->isInWindow = isInWindow; }
  void setSize(Size size) { size_ = size; }
  double alpha() const { return alpha_; }
  bool hasTransparentBackground() const { return hasTransparentBackground_; }
  const std::vector<std::shared_ptr<SimulatedVisualEffectView>>& effectViews() const {
    return effectViews_;
  }

 private:
  std::shared_ptr<SimulatedEngine> engine_;
  Size size_;
  double alpha_ = 1;
  bool hasTransparentBackground_ = false;
  std::vector<std::shared_ptr<SimulatedVisualEffectView>> effectViews_;
};

}  // namespace zephyx
