#pragma once

#include <QtWidgets/QLabel>
#include <memory>

#include "Platform/Linux/Views/ViewWidget.h"

namespace zephyx {

class Label;

class LabelWidget final : public QLabel, public ViewWidget {
 public:
  explicit LabelWidget(std::shared_ptr<Label> label);

  QWidget& widget() override { return *this; }
  void showView() override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  const std::shared_ptr<Label> label_;
};

}  // namespace zephyx
