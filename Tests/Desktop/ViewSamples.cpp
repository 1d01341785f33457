#include "Tests/Desktop/ViewSamples.h"

#include <cmath>

namespace zephyx {
namespace {

constexpr Animation fade{.seconds = 0.18};

Color colorOf(double progress) {
  return progress < 0.6   ? color::systemGreen
         : progress < 0.8 ? color::systemYellow
                          : color::systemRed;
}

void drawRing(Canvas& canvas, Point center, double radius, double lineWidth, double progress) {
  canvas.strokeArc(center, radius, 90, 360, lineWidth, color::tertiaryLabel);
  canvas.strokeArc(center, radius, 90, -360 * progress, lineWidth, colorOf(progress));
}

template <typename Kind, typename... Arguments>
std::shared_ptr<Kind> add(View& parent, Rect frame, Arguments&&... arguments) {
  auto child = std::make_shared<Kind>(std::forward<Arguments>(arguments)...);
  child->setFrame(frame);
  parent.addChild(child);
  return child;
}

TextStyle text(double size, FontWeight weight = FontWeight::regular, Color color = color::label,
               TextAlignment alignment = TextAlignment::leading) {
  return {{size, weight}, color, alignment};
}

}  // namespace

SampleRing::SampleRing(const std::string& title, const std::string& symbol, double progress)
    : View({{0, 0}, {60, 60}}), progress_(progress), title_(title) {
  const auto percent = std::to_string(std::lround(progress * 100)) + "%";
  setAccessibilityLabel(title);
  setAccessibilityValue(percent);
  setToolTip(title + ": " + percent);
  symbol_ = add<SymbolImage>(*this, {{18, 24}, {24, 24}},
                             SystemSymbol{symbol, 13, FontWeight::medium, color::label});
  value = add<Label>(*this, {{10, 26}, {40, 20}}, percent,
                     text(12, FontWeight::regular, color::label, TextAlignment::center));
  value->setAlpha(0);
}

void SampleRing::draw(Canvas& canvas) {
  drawRing(canvas, {30, 36}, 20, 5, progress_);
  canvas.drawText(title_, {{0, 0}, {60, 12}},
                  text(9, FontWeight::semibold, color::label, TextAlignment::center));
}

void SampleRing::mouseEntered() {
  ++entered;
  value->setAlpha(1, fade);
  symbol_->setAlpha(0, fade);
}

void SampleRing::mouseExited() {
  ++exited;
  value->setAlpha(0, fade);
  symbol_->setAlpha(1, fade);
}

SampleAgentRow::SampleAgentRow() : View({{0, 0}, {320, 56}}) {
  setAcceptsClicks(true);
  setAccessibilityLabel("Agent usage");
  add<Label>(*this, {{56, 29}, {180, 17}}, "Coding agent", text(13, FontWeight::semibold));
  subtitle = add<Label>(*this, {{56, 11}, {180, 15}}, "Session 42% · resets 17:30",
                        text(11, FontWeight::regular, color::secondaryLabel));
  chevron_ = add<SymbolImage>(
      *this, {{284, 18}, {20, 20}},
      SystemSymbol{"chevron.down", 11, FontWeight::semibold, color::secondaryLabel}, "Expand");
}

void SampleAgentRow::draw(Canvas& canvas) {
  const Rect content{{10, 4}, {bounds().size.width - 20, bounds().size.height - 8}};
  if (isHovered_) canvas.fillRoundedRect(content, 8, color::hoverBackground);
  drawRing(canvas, {34, 28}, 14, 3.5, 0.42);
  canvas.drawText("42%", {{20, 22}, {28, 12}},
                  text(8, FontWeight::semibold, color::label, TextAlignment::center));
}

void SampleAgentRow::mouseEntered() {
  isHovered_ = true;
  setNeedsDisplay();
}

void SampleAgentRow::mouseExited() {
  isHovered_ = false;
  setNeedsDisplay();
}

void SampleAgentRow::clicked(Point position) {
  clicks.push_back(position);
}

SampleMenu::SampleMenu() {
  menu = std::make_shared<Menu>(nullptr);
  auto monitor = std::make_shared<View>(Rect{{0, 0}, {320, 84}});
  const std::pair<const char*, const char*> gauges[] = {
      {"CPU", "cpu"}, {"TEMP", "thermometer"}, {"MEM", "memorychip"}, {"DISK", "internaldrive"}};
  double progress = 0.35;
  for (const auto& [title, symbol] : gauges) {
    auto ring = std::make_shared<SampleRing>(title, symbol, progress);
    ring->setFrame({{16 + 76.0 * static_cast<double>(rings.size()), 12}, {60, 60}});
    monitor->addChild(ring);
    rings.push_back(ring);
    progress += 0.2;
  }
  menu->addItem(MenuItem::withView("System", monitor));

  agentPanel = std::make_shared<View>(Rect{{0, 0}, {320, 96}});
  agent = std::make_shared<SampleAgentRow>();
  agent->setFrame({{0, 40}, {320, 56}});
  agentPanel->addChild(agent);
  button = add<PushButton>(*agentPanel, {{16, 8}, {150, 26}}, "Disconnect & forget");
  button->onClick = [this] { ++buttonClicks; };
  menu->addItem(MenuItem::withView("Agents", agentPanel));
  menu->addItem(MenuItem::separator());

  auto brightness = std::make_shared<View>(Rect{{0, 0}, {280, 62}});
  add<Label>(*brightness, {{16, 38}, {200, 16}}, "External Monitor Brightness", text(12));
  add<SymbolImage>(*brightness, {{14, 12}, {18, 18}},
                   SystemSymbol{"moon.fill", 11, FontWeight::regular, color::secondaryLabel},
                   "Decrease brightness");
  slider = add<Slider>(*brightness, {{38, 8}, {200, 26}});
  slider->setAccessibilityLabel("Brightness");
  slider->setValue(0.6);
  slider->onChange = [this](double level) { levels.push_back(level); };
  add<SymbolImage>(*brightness, {{244, 12}, {18, 18}},
                   SystemSymbol{"sun.max.fill", 11, FontWeight::regular, color::secondaryLabel},
                   "Increase brightness");
  menu->addItem(MenuItem::withView("Brightness", brightness));
  menu->addItem(MenuItem::separator());

  auto lockRow = std::make_shared<View>(Rect{{0, 0}, {320, 48}});
  add<Label>(*lockRow, {{16, 26}, {220, 17}}, "Lock Keyboard for Cleaning", text(13));
  lockSubtitle = add<Label>(*lockRow, {{16, 8}, {220, 15}}, "Ctrl+Alt+Super+K",
                            text(11, FontWeight::regular, color::secondaryLabel));
  lock = add<Switch>(*lockRow, {{258, 9}, {46, 30}});
  lock->setAccessibilityLabel("Keyboard lock");
  lock->onToggle = [this] { locks.push_back(lock->isOn()); };
  menu->addItem(MenuItem::withView("Lock", lockRow));
  menu->addItem(MenuItem::separator());
  menu->addItem(std::make_shared<MenuItem>("Quit", "quit", [this] { ++chosen; }));
}

SamplePanel::SamplePanel(const std::string& words) {
  symbol_ = add<SymbolImage>(
      *this, {}, SystemSymbol{"mic.slash.fill", 26, FontWeight::semibold, color::systemRed});
  text_ = add<Label>(*this, {}, words,
                     TextStyle{{13, FontWeight::semibold}, color::white, TextAlignment::center});
}

void SamplePanel::layout() {
  symbol_->setFrame({{bounds().midX() - 20, 46}, {40, 40}});
  text_->setFrame({{0, 20}, {bounds().size.width, 20}});
}

void SamplePanel::draw(Canvas& canvas) {
  canvas.fillRoundedRect(bounds(), 18, color::black.withAlpha(0.78));
}

}  // namespace zephyx
