#pragma once

#include <QtWidgets/QWidget>
#include <functional>

#include "Platform/Linux/PreviewContent.h"

class QLabel;
class QPlainTextEdit;
class QStackedWidget;

namespace zephyx {

/// A frameless dark window with a title row, a close button and one file's contents. Main thread.
class PreviewWindow final : public QWidget {
 public:
  PreviewWindow();

  /// Rounded corners need a compositor.
  void setRounded(bool rounded) { isRounded_ = rounded; }
  /// Shows `content`, in a size that fits it and `available`, centred there.
  void setContent(const PreviewContent& content, const QRect& available);
  /// The largest picture that `available` has room for.
  static QSize pictureLimit(const QRect& available);

  /// Offered each key press first; returns true when it is dealt with.
  std::function<bool(const QKeyEvent&)> onKeyPress;
  /// The user closes the window by its own control.
  std::function<void()> onClose;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QSize showContent(const PreviewContent& content, QSize limit);

  bool isRounded_ = false;
  QLabel* name_;
  QLabel* details_;
  QStackedWidget* pages_;
  QLabel* picture_;
  QPlainTextEdit* text_;
  QLabel* card_;
};

}  // namespace zephyx
