#pragma once

#include <string>
#include <utility>

#include "Platform/TextStyle.h"
#include "Platform/View.h"
#include "Platform/ViewVisitor.h"

namespace zephyx {

/// One line of text.
class Label final : public View {
 public:
  explicit Label(std::string text = {}, TextStyle style = {})
      : text_(std::move(text)), style_(style) {}

  void accept(ViewVisitor& visitor) override { visitor.visitLabel(*this); }

  const std::string& text() const { return text_; }
  void setText(std::string text) { set(text_, std::move(text)); }
  const TextStyle& style() const { return style_; }
  void setStyle(TextStyle style) { set(style_, style); }

 private:
  std::string text_;
  TextStyle style_;
};

}  // namespace zephyx
