#pragma once

#include <QtWidgets/QSlider>
#include <memory>

#include "Platform/Linux/Views/ViewWidget.h"

namespace zephyx {

class Slider;

class SliderWidget final : public QSlider, public ViewWidget {
 public:
  explicit SliderWidget(std::shared_ptr<Slider> slider);

  QWidget& widget() override { return *this; }
  void showView() override;

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  const std::shared_ptr<Slider> slider_;
};

}  // namespace zephyx
