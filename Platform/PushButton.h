#pragma once

#include <functional>
#include <string>
#include <utility>

#include "Platform/Control.h"
#include "Platform/ViewVisitor.h"

namespace zephyx {

class PushButton final : public Control {
 public:
  explicit PushButton(std::string title = {}) : title_(std::move(title)) {}

  void accept(ViewVisitor& visitor) override { visitor.visitPushButton(*this); }

  const std::string& title() const { return title_; }
  void setTitle(std::string title) { set(title_, std::move(title)); }

  /// May end the button.
  std::function<void()> onClick;

  /// The user clicks.
  void click() {
    const auto action = onClick;
    if (isEnabled() && action) action();
  }

 private:
  std::string title_;
};

}  // namespace zephyx
