#include "Screens/PasteShortcut.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <utility>

namespace zephyx {
namespace {

bool takesText(const QQuickItem* item) {
  return item && item->metaObject()->indexOfMethod("insert(int,QString)") >= 0 &&
         !item->property("readOnly").toBool();
}

}  // namespace

PasteShortcut::PasteShortcut(ClipboardTextReader read, qsizetype maximumCharacters,
                             std::function<void()> tooLong)
    : read_(std::move(read)), maximumCharacters_(maximumCharacters), tooLong_(std::move(tooLong)) {
  qGuiApp->installEventFilter(this);
}

PasteShortcut::~PasteShortcut() = default;

bool PasteShortcut::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto* window = qobject_cast<QQuickWindow*>(watched);
  if (!window || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste)) return false;
  auto* field = window->activeFocusItem();
  if (!takesText(field)) return false;
  read_(guard_.wrap([this, field = QPointer(field)](std::optional<std::string> text) {
    if (field && text) paste(*field, QString::fromStdString(*text));
  }));
  return true;
}

void PasteShortcut::paste(QQuickItem& field, QString text) {
  if (text.isEmpty()) return;
  if (text.size() > maximumCharacters_) return tooLong_();
  if (field.inherits("QQuickTextInput")) text.replace('\n', ' ');
  const int start = field.property("selectionStart").toInt();
  QMetaObject::invokeMethod(&field, "remove", Q_ARG(int, start),
                            Q_ARG(int, field.property("selectionEnd").toInt()));
  QMetaObject::invokeMethod(&field, "insert", Q_ARG(int, start), Q_ARG(QString, text));
}

}  // namespace zephyx
