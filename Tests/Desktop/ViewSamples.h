#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Platform/Canvas.h"
#include "Platform/Label.h"
#include "Platform/Menu.h"
#include "Platform/PushButton.h"
#include "Platform/Slider.h"
#include "Platform/Switch.h"
#include "Platform/SymbolImage.h"
#include "Platform/View.h"

namespace zephyx {

/// A gauge whose symbol makes place for its value while the pointer is over it.
class SampleRing final : public View {
 public:
  SampleRing(const std::string& title, const std::string& symbol, double progress);

  void draw(Canvas& canvas) override;
  void mouseEntered() override;
  void mouseExited() override;

  int entered = 0;
  int exited = 0;
  std::shared_ptr<Label> value;

 private:
  double progress_;
  std::string title_;
  std::shared_ptr<SymbolImage> symbol_;
};

/// A row that reacts to clicks: it opens and closes, which changes its height.
class SampleAgentRow final : public View {
 public:
  SampleAgentRow();

  void draw(Canvas& canvas) override;
  void mouseEntered() override;
  void mouseExited() override;
  void clicked(Point position) override;

  std::vector<Point> clicks;
  std::shared_ptr<Label> subtitle;

 private:
  bool isHovered_ = false;
  std::shared_ptr<SymbolImage> chevron_;
};

/// One view of each kind, in the rows of a menu.
struct SampleMenu {
  SampleMenu();

  std::vector<std::shared_ptr<SampleRing>> rings;
  std::shared_ptr<SampleAgentRow> agent;
  std::shared_ptr<PushButton> button;
  std::shared_ptr<View> agentPanel;  ///< the agent's row and the button below it
  std::shared_ptr<Slider> slider;
  std::shared_ptr<Switch> lock;
  std::shared_ptr<Label> lockSubtitle;
  std::shared_ptr<Menu> menu;
  int chosen = 0;
  std::vector<double> levels;
  std::vector<bool> locks;
  int buttonClicks = 0;
};

/// A dark panel with a symbol and a text.
class SamplePanel final : public View {
 public:
  explicit SamplePanel(const std::string& words);

  void draw(Canvas& canvas) override;

 protected:
  void layout() override;

 private:
  std::shared_ptr<SymbolImage> symbol_;
  std::shared_ptr<Label> text_;
};

}  // namespace zephyx
