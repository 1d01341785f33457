#pragma once

#include <QtCore/QObject>
#include <functional>

#include "Platform/LifetimeGuard.h"
#include "Platform/Linux/Engines/ScreenProgram.h"

class QQuickItem;

namespace zephyx {

/// The system's paste shortcut in every text field of the screens, as long as this object lives:
/// the text is read while the main thread goes on, and takes the place of the selection. Main
/// thread.
class PasteShortcut : public QObject {
 public:
  /// Texts of more than `maximumCharacters` are not pasted; `tooLong` is called then.
  PasteShortcut(ClipboardTextReader read, qsizetype maximumCharacters,
                std::function<void()> tooLong);
  ~PasteShortcut() override;

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paste(QQuickItem& field, QString text);

  ClipboardTextReader read_;
  qsizetype maximumCharacters_;
  std::function<void()> tooLong_;
  LifetimeGuard guard_;
};

}  // namespace zephyx
