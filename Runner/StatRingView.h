#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Platform/Color.h"
#include "Platform/View.h"

namespace zephyx {

class Label;
class SymbolImage;

/// A ring gauge with a symbol in its middle, which makes place for the value while the pointer is
/// over the ring, and a title below. Main thread.
class StatRingView final : public View {
 public:
  /// From the progress to the colour of the arc.
  using ColorProvider = std::function<Color(double)>;

  /// `description` is the title in full words, for assistive technology and the tool tip.
  StatRingView(std::string title, std::string description, std::string symbol,
               ColorProvider colorProvider);

  const std::string& title() const { return title_; }
  double progress() const { return progress_; }
  const std::string& valueText() const;
  Color color() const { return colorProvider_(progress_); }
  bool isHovered() const { return isHovered_; }

  /// From 0 to 1, and to the nearer of them. The value is shown in percent, or as `valueText`.
  void setProgress(double progress);
  void setProgress(double progress, const std::string& valueText);
  /// Shows the value, or the symbol.
  void setHovered(bool isHovered);

  void draw(Canvas& canvas) override;
  void mouseEntered() override;
  void mouseExited() override;

 private:
  const std::string title_;
  const ColorProvider colorProvider_;
  double progress_ = 0;
  bool isHovered_ = false;
  std::shared_ptr<SymbolImage> symbol_;
  std::shared_ptr<Label> value_;
};

}  // namespace zephyx
