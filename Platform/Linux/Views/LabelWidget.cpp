#include "Platform/Linux/Views/LabelWidget.h"

#include <utility>

#include "Platform/Label.h"
#include "Platform/Linux/Views/ViewLook.h"

namespace zephyx {

LabelWidget::LabelWidget(std::shared_ptr<Label> label) : label_(std::move(label)) {
  setTextFormat(Qt::PlainText);
  setIndent(0);
}

void LabelWidget::showView() {
  const auto& style = label_->style();
  // The colours of the text around it, not those that this label has now.
  auto colors = parentWidget() ? parentWidget()->palette() : palette();
  colors.setColor(QPalette::WindowText, viewLook::color(style.color, colors));
  setPalette(colors);
  setFont(viewLook::font(style.font));
  setAlignment(viewLook::alignment(style.alignment, layoutDirection()));
  const auto text = QString::fromStdString(label_->text());
  setText(viewLook::fitted(text, style, width()));
  if (label_->accessibilityLabel().empty()) setAccessibleName(text);
}

void LabelWidget::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  showView();
}

}  // namespace zephyx
