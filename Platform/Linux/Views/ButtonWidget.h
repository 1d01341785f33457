#pragma once

#include <QtWidgets/QPushButton>
#include <memory>

#include "Platform/Linux/Views/ViewWidget.h"

namespace zephyx {

class PushButton;

class ButtonWidget final : public QPushButton, public ViewWidget {
 public:
  explicit ButtonWidget(std::shared_ptr<PushButton> button);

  QWidget& widget() override { return *this; }
  void showView() override;

 private:
  const std::shared_ptr<PushButton> button_;
};

}  // namespace zephyx
