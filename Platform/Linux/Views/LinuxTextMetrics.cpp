#include "Platform/Linux/Views/LinuxTextMetrics.h"

#include <QtGui/QFontMetricsF>
#include <cmath>

#include "Platform/Linux/Views/ViewLook.h"

namespace zephyx {

Size LinuxTextMetrics::size(const std::string& text, const Font& font) const {
  const QFontMetricsF metrics(viewLook::font(font));
  return {std::ceil(metrics.horizontalAdvance(QString::fromStdString(text))),
          std::ceil(metrics.height())};
}

}  // namespace zephyx
