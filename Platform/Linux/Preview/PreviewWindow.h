#pragma once

#include <QtWidgets/QWidget>
#include <functional>

#include "Platform/Linux/Preview/PreviewContent.h"

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
  /// Where the preview goes: what is free of a screen, and how many pixels a point has there.
  struct Place {
    QRect available;
    double ratio = 1;
  };
  /// Shows `content` in the middle of `place`, in a size that fits both.
  void setContent(const PreviewContent& content, const Place& place);
  /// The largest picture that `place` has room for, in pixels.
  static QSize pictureLimit(const Place& place) { return contentLimit(place) * place.ratio; }

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
  static QSize contentLimit(const Place& place);
  QSize showContent(const PreviewContent& content, double ratio);

  bool isRounded_ = false;
  QLabel* name_;
  QLabel* details_;
  QStackedWidget* pages_;
  QLabel* picture_;
  QPlainTextEdit* text_;
  QLabel* card_;
};

}  // namespace zephyx
