#include "Platform/Linux/Alerts/AlertWindow.h"

#include <QtGui/QGuiApplication>
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
constexpr QSize minimumButton(92, 30);

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

QLabel* label(const std::string& text, const Font& font) {
  auto* made = new QLabel(QString::fromStdString(text));
  made->setFont(viewLook::font(font));
  made->setTextFormat(Qt::PlainText);
  made->setWordWrap(true);
  made->setFixedWidth(textWidth);
  // A wrapped text says how high it is only for a width that it is asked about.
  made->setFixedHeight(made->heightForWidth(textWidth));
  return made;
}

void setColor(QLabel& label, Color color, const QPalette& palette) {
  auto colors = palette;
  colors.setColor(QPalette::WindowText, viewLook::color(color, palette));
  label.setPalette(colors);
}

}  // namespace

AlertWindow::AlertWindow(const Alert& alert, bool isRounded)
    : QDialog(nullptr, Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      lastButton_(alert.buttons.size() - 1),
      isRounded_(isRounded),
      symbol_(new QLabel),
      message_(label(alert.message, {15, FontWeight::semibold})),
      text_(label(alert.informativeText, {13})) {
  if (isRounded) setAttribute(Qt::WA_TranslucentBackground);
  setWindowTitle(QString::fromStdString(alert.message));
  setAccessibleDescription(QString::fromStdString(alert.informativeText));

  auto* words = new QVBoxLayout;
  words->setSpacing(8);
  words->addWidget(message_);
  words->addWidget(text_);
  auto* question = new QHBoxLayout;
  question->setSpacing(16);
  question->addWidget(symbol_, 0, Qt::AlignTop);
  question->addLayout(words);

  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(8);
  for (std::size_t i = 0; i < alert.buttons.size(); ++i) {
    auto title = QString::fromStdString(alert.buttons[i]);
    auto* button = new QPushButton(title.replace(QLatin1Char('&'), QLatin1String("&&")), this);
    button->setMinimumSize(minimumButton);
    connect(button, &QPushButton::clicked, this, [this, i] { done(static_cast<int>(i)); });
    // The first one stands at the end of the line.
    buttons->insertWidget(0, button);
    if (i > 0) continue;
    button->setDefault(true);
    button->setFocus();
  }
  buttons->insertStretch(0, 1);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(margin, margin, margin, margin);
  column->setSpacing(20);
  column->addLayout(question);
  column->addLayout(buttons);
  column->setSizeConstraint(QLayout::SetFixedSize);
  applyLook();
}

void AlertWindow::applyLook() {
  const auto palette = QGuiApplication::palette();
  symbol_->setPixmap(badge(palette, devicePixelRatio()));
  const auto look = viewLook::buttonLook(palette);
  if (look != styleSheet()) setStyleSheet(look);
  // After the style sheet, which puts palettes back.
  setColor(*message_, color::label, palette);
  setColor(*text_, color::secondaryLabel, palette);
}

void AlertWindow::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) applyLook();
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
