#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Platform/Color.h"
#include "Platform/View.h"

namespace zephyx {

class Label;
class SymbolImage;
class UsageMiniRingView;

/// A coding agent's row: its ring, its name and a line about it. The keyboard can click it.
class AgentRowView : public View {
 public:
  /// Whether the row has something to unfold, and does.
  enum class Disclosure { none, closed, open };

  explicit AgentRowView(const std::string& name);

  UsageMiniRingView& ring() const { return *ring_; }
  const Label& subtitleLabel() const { return *subtitleLabel_; }
  void setSubtitle(const std::string& text);
  Disclosure disclosure() const { return disclosure_; }
  void setDisclosure(Disclosure disclosure);

  std::function<void()> onClick;

  void draw(Canvas& canvas) override;
  void mouseEntered() override;
  void mouseExited() override;
  void clicked(Point position) override;

  /// Of texts below the row that belong to it: as far from the sides as those in it.
  static constexpr double textLeft = 64;
  static constexpr double textRight = 22;

 protected:
  void setTitleColor(Color color);
  void layout() override;

 private:
  bool isHovered_ = false;
  Disclosure disclosure_ = Disclosure::none;
  std::shared_ptr<UsageMiniRingView> ring_;
  std::shared_ptr<Label> titleLabel_;
  std::shared_ptr<Label> subtitleLabel_;
  std::shared_ptr<SymbolImage> chevron_;
};

}  // namespace zephyx
