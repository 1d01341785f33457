#pragma once

#include <QtCore/QString>
#include <QtWidgets/QWidget>
#include <functional>
#include <vector>

class QHBoxLayout;
class QLabel;
class QProgressBar;
class QTextBrowser;

namespace zephyx {

/// What the window for updates shows at one time.
struct UpdatePage {
  struct Button {
    QString label;
    std::function<void()> action;
    bool isAside = false;  ///< stands at the left, away from the others
  };
  QString title;
  QString text;
  QString notes;  ///< as `limitedRichText` makes it; empty for none
  QString notesLink;
  bool hasProgress = false;         ///< towards an end that is not known until `setProgress`
  std::vector<Button> buttons;      ///< from left to right; Return presses the last one
  std::function<void()> dismissed;  ///< by Escape or by closing the window
};

/// The framework's one window. Decides nothing, hides itself never.
class UpdateWindow final : public QWidget {
  Q_OBJECT

 public:
  UpdateWindow();

  void setPage(UpdatePage page);
  /// Bytes, in the place of the page's text.
  void setProgress(qint64 received, qint64 total);

  /// The window has become the active one.
  std::function<void()> onActivation;
  /// A web page that the user wants to see.
  std::function<void(const QString& url)> onLink;

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  QTextBrowser* makeNotes();
  void setButtons();

  UpdatePage page_;
  QLabel* title_;
  QLabel* text_;
  QTextBrowser* notes_;
  QLabel* notesLink_;
  QProgressBar* progress_;
  QHBoxLayout* buttons_;
};

}  // namespace zephyx
