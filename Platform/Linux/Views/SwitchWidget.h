#pragma once

#include <QtCore/QVariantAnimation>
#include <QtWidgets/QAbstractButton>
#include <memory>

#include "Platform/Linux/Views/ViewWidget.h"

namespace zephyx {

class Switch;

/// A switch, which the toolkit does not have; for assistive technology it is a check box.
class SwitchWidget final : public QAbstractButton, public ViewWidget {
  Q_OBJECT

 public:
  explicit SwitchWidget(std::shared_ptr<Switch> control);

  QWidget& widget() override { return *this; }
  void showView() override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void nextCheckState() override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  const std::shared_ptr<Switch> control_;
  QVariantAnimation knob_;  ///< its place: 0 is off, 1 is on
  bool showsFocus_ = false;
};

}  // namespace zephyx
