#include "Platform/Linux/Views/SymbolWidget.h"

#include <QtGui/QPainter>
#include <utility>

#include "Platform/Linux/Views/ViewAccessibility.h"
#include "Platform/Linux/Views/ViewLook.h"
#include "Platform/SymbolImage.h"

namespace zephyx {

SymbolWidget::SymbolWidget(std::shared_ptr<SymbolImage> image) : image_(std::move(image)) {
  installViewAccessibility();
}

void SymbolWidget::showView() {
  path_ = viewLook::symbol(image_->symbol());
  update();
}

void SymbolWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double side = viewLook::symbolSize(image_->symbol());
  painter.translate((width() - side) / 2, (height() - side) / 2);
  painter.fillPath(path_, viewLook::color(image_->symbol().tint, palette()));
}

}  // namespace zephyx
