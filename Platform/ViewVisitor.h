#pragma once

namespace zephyx {

class Label;
class PushButton;
class Slider;
class Switch;
class SymbolImage;
class View;

/// Tells the kinds of views apart; see `View::accept`.
class ViewVisitor {
 public:
  virtual ~ViewVisitor() = default;
  /// A view of the host's own drawing.
  virtual void visitView(View& view) = 0;
  virtual void visitLabel(Label& label) = 0;
  virtual void visitPushButton(PushButton& button) = 0;
  virtual void visitSlider(Slider& slider) = 0;
  virtual void visitSwitch(Switch& control) = 0;
  virtual void visitSymbolImage(SymbolImage& image) = 0;
};

}  // namespace zephyx
