#pragma once

#include <string>
#include <utility>

#include "Platform/TextStyle.h"
#include "Platform/View.h"
#include "Platform/ViewVisitor.h"

namespace zephyx {

/// A system symbol in the middle of its frame. Its accessibility label describes it.
class SymbolImage final : public View {
 public:
  explicit SymbolImage(SystemSymbol symbol, std::string description = {})
      : symbol_(std::move(symbol)) {
    setAccessibilityLabel(std::move(description));
  }

  void accept(ViewVisitor& visitor) override { visitor.visitSymbolImage(*this); }

  const SystemSymbol& symbol() const { return symbol_; }
  void setSymbol(SystemSymbol symbol) { set(symbol_, std::move(symbol)); }

 private:
  SystemSymbol symbol_;
};

}  // namespace zephyx
