#include "Platform/Linux/Updates/UpdateWindow.h"

#include <QtCore/QLocale>
#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QVBoxLayout>
#include <utility>

#include "Platform/Linux/Symbols/SymbolPath.h"

namespace zephyx {
namespace {

constexpr int margin = 20;
constexpr int iconSize = 48;
constexpr int windowWidth = 480;
constexpr int notesHeight = 220;
constexpr int progressSteps = 1'000;
constexpr QSize buttonPadding(16, 6);

/// Shows rich text and loads nothing that the text names.
class NotesBrowser final : public QTextBrowser {
 public:
  QVariant loadResource(int, const QUrl&) override { return {}; }
};

/// The program's mark: its symbol on a tile.
class Emblem final : public QWidget {
 public:
  Emblem() { setFixedSize(iconSize, iconSize); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Highlight));
    painter.drawRoundedRect(rect(), 11, 11);
    const double side = iconSize * 0.7;
    painter.translate((iconSize - side) / 2, (iconSize - side) / 2);
    painter.scale(side / symbolSide, side / symbolSide);
    painter.fillPath(symbolGlyph(QStringLiteral("note.text"), 1.8),
                     palette().color(QPalette::HighlightedText));
  }
};

}  // namespace

UpdateWindow::UpdateWindow()
    : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowCloseButtonHint),
      title_(new QLabel),
      text_(new QLabel),
      notes_(makeNotes()),
      notesLink_(new QLabel),
      progress_(new QProgressBar),
      buttons_(new QHBoxLayout) {
  setWindowTitle(QStringLiteral("Software Update"));
  setFixedWidth(windowWidth);
  auto bold = font();
  bold.setBold(true);
  title_->setFont(bold);
  for (auto* label : {title_, text_}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
  }
  connect(notesLink_, &QLabel::linkActivated, this, [this](const QString& url) { onLink(url); });
  progress_->setTextVisible(false);
  progress_->setRange(0, progressSteps);

  auto* words = new QVBoxLayout;
  words->setSpacing(8);
  for (auto* label : {title_, text_}) words->addWidget(label);
  auto* head = new QHBoxLayout;
  head->setSpacing(16);
  head->addWidget(new Emblem, 0, Qt::AlignTop);
  head->addLayout(words, 1);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(margin, margin, margin, margin);
  column->setSpacing(14);
  column->addLayout(head);
  for (QWidget* row : {static_cast<QWidget*>(notes_), static_cast<QWidget*>(notesLink_),
                       static_cast<QWidget*>(progress_)}) {
    column->addWidget(row);
  }
  column->addLayout(buttons_);
}

QTextBrowser* UpdateWindow::makeNotes() {
  auto* notes = new NotesBrowser;
  notes->setAccessibleName(QStringLiteral("Release notes"));
  notes->setFixedHeight(notesHeight);
  notes->setOpenLinks(false);
  notes->document()->setDocumentMargin(10);
  notes->document()->setIndentWidth(20);
  connect(notes, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) {
    if (url.scheme() == QLatin1String("https")) onLink(url.toString());
  });
  return notes;
}

void UpdateWindow::setPage(UpdatePage page) {
  page_ = std::move(page);
  title_->setText(page_.title);
  text_->setText(page_.text);
  text_->setVisible(!page_.text.isEmpty());
  notes_->setHtml(page_.notes);
  notes_->setVisible(!page_.notes.isEmpty());
  notesLink_->setText(
      QStringLiteral("<a href=\"%1\">Full release notes</a>").arg(page_.notesLink.toHtmlEscaped()));
  notesLink_->setVisible(!page_.notesLink.isEmpty());
  progress_->setVisible(page_.hasProgress);
  progress_->setRange(0, 0);
  setButtons();
  setFixedHeight(layout()->totalHeightForWidth(windowWidth));
}

void UpdateWindow::setButtons() {
  // A button may be what called.
  while (auto* item = buttons_->takeAt(0)) {
    if (auto* old = item->widget()) {
      old->hide();
      old->deleteLater();
    }
    delete item;
  }
  bool hasStretch = false;
  for (const auto& each : page_.buttons) {
    if (!each.isAside && !std::exchange(hasStretch, true)) buttons_->addStretch(1);
    auto* button = new QPushButton(each.label);
    button->setAutoDefault(true);  // Return presses it while it has the keyboard
    connect(button, &QPushButton::clicked, this, [action = each.action] { action(); });
    button->setMinimumSize(button->sizeHint() + buttonPadding);
    buttons_->addWidget(button);
    button->show();
    if (&each != &page_.buttons.back()) continue;
    button->setDefault(true);
    button->setFocus();
  }
}

void UpdateWindow::setProgress(qint64 received, qint64 total) {
  progress_->setRange(0, progressSteps);
  progress_->setValue(static_cast<int>(received * progressSteps / total));
  const QLocale locale;
  text_->setText(QStringLiteral("%1 of %2")
                     .arg(locale.formattedDataSize(received), locale.formattedDataSize(total)));
}

bool UpdateWindow::event(QEvent* event) {
  const bool isDone = QWidget::event(event);
  if (event->type() == QEvent::WindowActivate && onActivation) onActivation();
  return isDone;
}

void UpdateWindow::keyPressEvent(QKeyEvent* event) {
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (event->key() == Qt::Key_Escape) {
    close();
  } else if (isReturn && !page_.buttons.empty()) {
    const auto action = page_.buttons.back().action;
    action();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void UpdateWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (const auto dismissed = page_.dismissed) dismissed();
}

}  // namespace zephyx
