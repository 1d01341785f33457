#pragma once

#include <memory>
#include <string>

#include "Platform/Color.h"
#include "Platform/View.h"

namespace zephyx {

class Label;

/// A small gauge: a ring that closes with the utilisation, and the percentage in it.
class UsageMiniRingView final : public View {
 public:
  UsageMiniRingView();

  double progress() const { return progress_; }
  /// From 0 to 1; what lies outside becomes the nearest of them.
  void setProgress(double progress);
  /// Empty, with a dash for the percentage: nothing is known.
  void clear();

  const Label& percentLabel() const { return *percentLabel_; }
  Color progressColor() const;

  void draw(Canvas& canvas) override;

 protected:
  void layout() override;

 private:
  void show(const std::string& text, Color color);

  double progress_ = 0;
  std::shared_ptr<Label> percentLabel_;
};

}  // namespace zephyx
