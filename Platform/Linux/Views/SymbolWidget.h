#pragma once

#include <QtGui/QPainterPath>
#include <QtWidgets/QWidget>
#include <memory>

#include "Platform/Linux/Views/ViewWidget.h"

namespace zephyx {

class SymbolImage;

class SymbolWidget final : public QWidget, public ViewWidget {
  Q_OBJECT

 public:
  explicit SymbolWidget(std::shared_ptr<SymbolImage> image);

  QWidget& widget() override { return *this; }
  void showView() override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const std::shared_ptr<SymbolImage> image_;
  QPainterPath path_;
};

}  // namespace zephyx
