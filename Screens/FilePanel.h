#pragma once

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <functional>

class QFileDialog;

namespace zephyx {

/// Asks for one JSON file in a window of its own. The program goes on meanwhile; one question at a
/// time. Main thread.
class FilePanel {
 public:
  FilePanel() = default;
  FilePanel(const FilePanel&) = delete;
  FilePanel& operator=(const FilePanel&) = delete;
  ~FilePanel();

  /// `chosen` runs with the path, unless the user gives up or the panel object ends before.
  using Chosen = std::function<void(const QString& path)>;
  void chooseForSaving(const QString& title, const QString& suggestedName, Chosen chosen);
  void chooseForOpening(const QString& title, Chosen chosen);

 private:
  QFileDialog* begin(const QString& title, Chosen chosen);

  QPointer<QFileDialog> dialog_;
};

}  // namespace zephyx
