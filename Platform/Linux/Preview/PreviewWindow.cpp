#include "Platform/Linux/Preview/PreviewWindow.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QWindow>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

namespace zephyx {
namespace {

constexpr int titleHeight = 44;
constexpr int margin = 12;
constexpr double cornerRadius = 12;
constexpr double shareOfScreen = 0.8;
constexpr QSize minimumContent(360, 200);
constexpr QSize textContent(760, 560);

constexpr const char* look = R"(
QLabel { color: #e8e8ec; }
QLabel#details { color: #9a9aa4; }
QToolButton { color: #c8c8d0; border: none; border-radius: 12px; font-size: 16px; }
QToolButton:hover { background: #44444d; color: white; }
QPlainTextEdit { background: #1b1b1f; color: #e0e0e6; border: none; border-radius: 8px; padding: 6px; }
QScrollBar:vertical { background: transparent; width: 10px; }
QScrollBar::handle:vertical { background: #4a4a54; border-radius: 4px; min-height: 30px; margin: 1px; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
)";

/// A sheet with a folded corner, or a folder.
QPixmap largeIcon(bool isFolder, double ratio) {
  QPixmap pixmap(QSize(112, 112) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(QColor(0x8a, 0x8a, 0x95), 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(QColor(0x35, 0x35, 0x3d));
  QPainterPath path;
  if (isFolder) {
    path.moveTo(10, 92);
    path.lineTo(10, 24);
    path.lineTo(44, 24);
    path.lineTo(54, 36);
    path.lineTo(102, 36);
    path.lineTo(102, 92);
    path.closeSubpath();
  } else {
    path.moveTo(26, 8);
    path.lineTo(66, 8);
    path.lineTo(88, 30);
    path.lineTo(88, 104);
    path.lineTo(26, 104);
    path.closeSubpath();
    path.moveTo(66, 8);
    path.lineTo(66, 30);
    path.lineTo(88, 30);
  }
  painter.drawPath(path);
  return pixmap;
}

}  // namespace

PreviewWindow::PreviewWindow()
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint),
      name_(new QLabel),
      details_(new QLabel),
      pages_(new QStackedWidget),
      picture_(new QLabel),
      text_(new QPlainTextEdit),
      card_(new QLabel) {
  setAttribute(Qt::WA_TranslucentBackground);
  setWindowTitle(QStringLiteral("Preview"));
  setStyleSheet(QLatin1String(look));
  setFocusPolicy(Qt::StrongFocus);
  details_->setObjectName(QStringLiteral("details"));
  for (auto* label : {name_, details_, card_}) label->setTextFormat(Qt::PlainText);

  auto* close = new QToolButton;
  close->setText(QStringLiteral("\u2715"));
  close->setAccessibleName(QStringLiteral("Close"));
  close->setFixedSize(24, 24);
  close->setFocusPolicy(Qt::NoFocus);
  connect(close, &QToolButton::clicked, this, &QWidget::close);

  QFont monospace(QStringLiteral("monospace"));
  monospace.setStyleHint(QFont::Monospace);
  text_->setFont(monospace);
  text_->setReadOnly(true);
  text_->setFocusPolicy(Qt::NoFocus);
  text_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
  picture_->setAlignment(Qt::AlignCenter);
  card_->setAlignment(Qt::AlignCenter);
  for (QWidget* page : {static_cast<QWidget*>(picture_), static_cast<QWidget*>(text_),
                        static_cast<QWidget*>(card_)}) {
    pages_->addWidget(page);
  }

  auto* title = new QHBoxLayout;
  title->addWidget(close);
  title->addSpacing(6);
  title->addWidget(name_);
  title->addStretch(1);
  title->addWidget(details_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(margin, margin, margin, margin);
  column->setSpacing(margin);
  column->addLayout(title);
  column->addWidget(pages_, 1);
}

QSize PreviewWindow::contentLimit(const Place& place) {
  return place.available.size() * shareOfScreen - QSize(2 * margin, titleHeight + 2 * margin);
}

void PreviewWindow::setContent(const PreviewContent& content, const Place& place) {
  const QSize inner =
      showContent(content, place.ratio).expandedTo(minimumContent).boundedTo(contentLimit(place));
  const auto elided =
      name_->fontMetrics().elidedText(content.name, Qt::ElideMiddle, inner.width() * 6 / 10);
  name_->setText(elided);
  QRect frame(QPoint(), inner + QSize(2 * margin, titleHeight + margin));
  frame.moveCenter(place.available.center());
  setGeometry(frame);
}

QSize PreviewWindow::showContent(const PreviewContent& content, double ratio) {
  details_->setText(content.details);
  picture_->clear();
  text_->clear();
  if (!content.image.isNull()) {
    auto picture = QPixmap::fromImage(content.image);
    picture.setDevicePixelRatio(ratio);
    picture_->setPixmap(picture);
    pages_->setCurrentWidget(picture_);
    return picture.deviceIndependentSize().toSize();
  }
  if (content.isText) {
    text_->setPlainText(content.text);
    pages_->setCurrentWidget(text_);
    return textContent;
  }
  card_->setPixmap(largeIcon(content.isFolder, ratio));
  pages_->setCurrentWidget(card_);
  return minimumContent;
}

void PreviewWindow::keyPressEvent(QKeyEvent* event) {
  if (onKeyPress && onKeyPress(*event)) return;
  if (pages_->currentWidget() == text_) {
    QCoreApplication::sendEvent(text_->verticalScrollBar(), event);
  }
}

void PreviewWindow::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && windowHandle()) windowHandle()->startSystemMove();
}

void PreviewWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (onClose) onClose();
}

void PreviewWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QColor(0x4a, 0x4a, 0x54));
  painter.setBrush(QColor(0x26, 0x26, 0x2b));
  const double radius = isRounded_ ? cornerRadius : 0;
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

}  // namespace zephyx
