#pragma once

#include "Platform/View.h"

namespace zephyx {

/// A view that the system draws and that the user operates.
class Control : public View {
 public:
  bool isEnabled() const { return isEnabled_; }
  void setEnabled(bool enabled) { set(isEnabled_, enabled); }

 private:
  bool isEnabled_ = true;
};

}  // namespace zephyx
