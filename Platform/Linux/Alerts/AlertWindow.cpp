#include "Platform/Linux/Alerts/AlertWindow.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QWindow>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include "Platform/Linux/Views/ViewLook.h"

namespace zephyx {
namespace {

constexpr int margin = 22;
constexpr int textWidth = 350;
constexpr int badgeSide = 46;
constexpr double badgeRadius = 11;
constexpr double cornerRadius = 14;

// Text, accent, text on it.
constexpr const char* look = R"(
QPushButton { color: %1; background: rgba(128, 128, 140, 60); border: 2px solid transparent;
  border-radius: 8px; padding: 6px 16px; min-width: 74px; font-size: 13px; }
QPushButton:hover { background: rgba(128, 128, 140, 90); }
QPushButton:pressed { background: rgba(128, 128, 140, 120); }
QPushButton:default { color: %3; background: %2; }
QPushButton:focus { border-color: rgba(128, 128, 140, 160); }
)";

/// The program's symbol on a coloured square.
QPixmap badge(const QPalette& palette, double ratio) {
  QPixmap pixmap(QSize(badgeSide, badgeSide) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette.highlight());
  painter.drawRoundedRect(QRectF(0, 0, badgeSide, badgeSide), badgeRadius, badgeRadius);
  const SystemSymbol symbol{"note.text", 22, FontWeight::medium, color::white};
  const double inset = (badgeSide - viewLook::symbolSize(symbol)) / 2;
  painter.translate(inset, inset);
  painter.fillPath(viewLook::symbol(symbol), Qt::white);
  return pixmap;
}

QLabel* label(const std::string& text, const TextStyle& style, const QPalette& palette) {
  auto* made = new QLabel(QString::fromStdString(text));
  auto colors = palette;
  colors.setColor(QPalette::WindowText, viewLook::color(style.color, palette));
  made->setPalette(colors);
  made->setFont(viewLook::font(style.font));
  made->setTextFormat(Qt::PlainText);
  made->setWordWrap(true);
  made->setFixedWidth(textWidth);
  // A wrapped text says how high it is only for a width that it is asked about.
  made->setFixedHeight(made->heightForWidth(textWidth));
  return made;
}

}  // namespace

AlertWindow::AlertWindow(const Alert& alert, bool isRounded)
    : QDialog(nullptr, Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      lastButton_(alert.buttons.size() - 1),
      isRounded_(isRounded) {
  if (isRounded) setAttribute(Qt::WA_TranslucentBackground);
  setWindowTitle(QString::fromStdString(alert.message));
  setAccessibleDescription(QString::fromStdString(alert.informativeText));
  setStyleSheet(QString::fromLatin1(look).arg(palette().color(QPalette::WindowText).name(),
                                              palette().color(QPalette::Highlight).name(),
                                              palette().color(QPalette::HighlightedText).name()));

  auto* symbol = new QLabel;
  symbol->setPixmap(badge(palette(), devicePixelRatio()));
  auto* words = new QVBoxLayout;
  words->setSpacing(8);
  words->addWidget(label(alert.message, {{15, FontWeight::semibold}, color::label}, palette()));
  if (!alert.informativeText.empty())
    words->addWidget(label(alert.informativeText, {{13}, color::secondaryLabel}, palette()));
  auto* question = new QHBoxLayout;
  question->setSpacing(16);
  question->addWidget(symbol, 0, Qt::AlignTop);
  question->addLayout(words);

  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(8);
  for (std::size_t i = 0; i < alert.buttons.size(); ++i) {
    auto title = QString::fromStdString(alert.buttons[i]);
    auto* button = new QPushButton(title.replace(QLatin1Char('&'), QLatin1String("&&")), this);
    connect(button, &QPushButton::clicked, this, [this, i] { done(static_cast<int>(i)); });
    // The first one stands at the end of the line.
    buttons->insertWidget(0, button);
    if (i == 0) {
      button->setDefault(true);
      button->setFocus();
    }
  }
  buttons->insertStretch(0, 1);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(margin, margin, margin, margin);
  column->setSpacing(20);
  column->addLayout(question);
  column->addLayout(buttons);
  column->setSizeConstraint(QLayout::SetFixedSize);
}

void AlertWindow::reject() {
  done(static_cast<int>(lastButton_));
}

void AlertWindow::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && windowHandle()) windowHandle()->startSystemMove();
}

void AlertWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QColor(128, 128, 140, 110));
  painter.setBrush(palette().window());
  const double radius = isRounded_ ? cornerRadius : 0;
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

}  // namespace zephyx
