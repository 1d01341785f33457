#include "Platform/Linux/Views/ViewLook.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtGui/QTransform>
#include <algorithm>

#include "Platform/Linux/Symbols/SymbolPath.h"

namespace zephyx::viewLook {
namespace {

/// A symbol's square compared to its point size, which is that of text beside it.
constexpr double symbolScale = 1.25;
constexpr double focusRingWidth = 2;

// Text, accent, text on it.
constexpr const char* buttonStyle = R"(
QPushButton { color: %1; background: rgba(128, 128, 140, 60); border: 2px solid transparent;
  border-radius: 7px; padding: 0 14px; font-size: 13px; }
QPushButton:hover { background: rgba(128, 128, 140, 90); }
QPushButton:pressed { background: rgba(128, 128, 140, 120); }
QPushButton:focus { border-color: %2; }
QPushButton:default { color: %3; background: %2; }
QPushButton:disabled { color: #80808a; background: rgba(128, 128, 140, 40); }
)";

struct Pair {
  QRgb dark;
  QRgb light;
};
constexpr Pair green{0xff30d158, 0xff28a745};
constexpr Pair yellow{0xffffd60a, 0xffe6a700};
constexpr Pair red{0xffff453a, 0xffe0352b};

bool isDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() <
         palette.color(QPalette::WindowText).lightness();
}

QColor ofText(const QPalette& palette, double alpha) {
  auto color = palette.color(QPalette::WindowText);
  color.setAlphaF(static_cast<float>(alpha));
  return color;
}

QColor named(Color::Name name, const QPalette& palette) {
  const auto either = [&](Pair pair) {
    return QColor::fromRgba(isDark(palette) ? pair.dark : pair.light);
  };
  switch (name) {
    case Color::Name::label:
      return palette.color(QPalette::WindowText);
    case Color::Name::secondaryLabel:
      return ofText(palette, 0.62);
    case Color::Name::tertiaryLabel:
      return ofText(palette, 0.26);
    case Color::Name::systemGreen:
      return either(green);
    case Color::Name::systemYellow:
      return either(yellow);
    case Color::Name::systemRed:
      return either(red);
    case Color::Name::accent:
      return palette.color(QPalette::Highlight);
    case Color::Name::hoverBackground:
      return ofText(palette, 0.09);
    case Color::Name::selectionBackground:
      return ofText(palette, 0.16);
    case Color::Name::white:
      return Qt::white;
    case Color::Name::black:
      return Qt::black;
  }
  return {};
}

QFont::Weight weight(FontWeight weight) {
  switch (weight) {
    case FontWeight::regular:
      return QFont::Normal;
    case FontWeight::medium:
      return QFont::Medium;
    case FontWeight::semibold:
      return QFont::DemiBold;
    case FontWeight::bold:
      return QFont::Bold;
  }
  return QFont::Normal;
}

double lineWidth(FontWeight weight) {
  switch (weight) {
    case FontWeight::regular:
      return 1.5;
    case FontWeight::medium:
      return 1.8;
    case FontWeight::semibold:
      return 2.1;
    case FontWeight::bold:
      return 2.5;
  }
  return 1.5;
}

}  // namespace

QColor color(Color color, const QPalette& palette) {
  auto found = named(color.name, palette);
  found.setAlphaF(static_cast<float>(found.alphaF() * std::clamp(color.alpha, 0.0, 1.0)));
  return found;
}

QFont font(const Font& font) {
  QFont result = QGuiApplication::font();
  result.setPixelSize(std::max(1, qRound(font.size)));
  result.setWeight(weight(font.weight));
  return result;
}

Qt::Alignment alignment(TextAlignment alignment, Qt::LayoutDirection direction) {
  if (alignment == TextAlignment::center) return Qt::AlignCenter;
  const bool isRight = (alignment == TextAlignment::trailing) != (direction == Qt::RightToLeft);
  return (isRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute | Qt::AlignVCenter;
}

QString fitted(const QString& text, const TextStyle& style, double width) {
  const QFontMetricsF metrics(font(style.font));
  if (metrics.horizontalAdvance(text) <= width) return text;
  return metrics.elidedText(
      text, style.truncation == TextTruncation::middle ? Qt::ElideMiddle : Qt::ElideRight, width);
}

QPainterPath symbol(const SystemSymbol& symbol) {
  const auto glyph = symbolGlyph(QString::fromStdString(symbol.name), lineWidth(symbol.weight));
  const double scale = symbolSize(symbol) / symbolSide;
  return QTransform::fromScale(scale, scale).map(glyph);
}

double symbolSize(const SystemSymbol& symbol) {
  return symbol.pointSize * symbolScale;
}

QString buttonLook(const QPalette& palette) {
  return QString::fromLatin1(buttonStyle)
      .arg(palette.color(QPalette::WindowText).name(), palette.color(QPalette::Highlight).name(),
           palette.color(QPalette::HighlightedText).name());
}

void drawFocusRing(QPainter& painter, const QRectF& around, double cornerRadius,
                   const QPalette& palette) {
  auto ring = palette.color(QPalette::Highlight);
  ring.setAlphaF(0.8f);
  painter.setPen(QPen(ring, focusRingWidth));
  painter.setBrush(Qt::NoBrush);
  const double inset = focusRingWidth / 2;
  painter.drawRoundedRect(around.adjusted(inset, inset, -inset, -inset), cornerRadius,
                          cornerRadius);
}

}  // namespace zephyx::viewLook
