#include "Screens/FilePanel.h"

#include <QtCore/QStandardPaths>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <QtWidgets/QFileDialog>

namespace zephyx {

FilePanel::~FilePanel() {
  delete dialog_;
}

void FilePanel::chooseForSaving(const QString& title, const QString& suggestedName, Chosen chosen) {
  QFileDialog* dialog = begin(title, std::move(chosen));
  if (!dialog) return;
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setFileMode(QFileDialog::AnyFile);
  dialog->selectFile(suggestedName);
  dialog->show();
}

void FilePanel::chooseForOpening(const QString& title, Chosen chosen) {
  QFileDialog* dialog = begin(title, std::move(chosen));
  if (!dialog) return;
  dialog->setAcceptMode(QFileDialog::AcceptOpen);
  dialog->setFileMode(QFileDialog::ExistingFile);
  dialog->show();
}

QFileDialog* FilePanel::begin(const QString& title, Chosen chosen) {
  if (dialog_) {
    dialog_->raise();
    dialog_->activateWindow();
    return nullptr;
  }
  dialog_ = new QFileDialog(nullptr, title);
  dialog_->setAttribute(Qt::WA_DeleteOnClose);
  dialog_->setOption(QFileDialog::DontUseNativeDialog);
  dialog_->setNameFilters({QStringLiteral("Notes (*.json)"), QStringLiteral("All files (*)")});
  dialog_->setDirectory(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  dialog_->setDefaultSuffix(QStringLiteral("json"));
  // A child of the window that asks, so that window managers keep it in front of that window.
  if (QWindow* asking = QGuiApplication::focusWindow()) {
    dialog_->winId();
    dialog_->windowHandle()->setTransientParent(asking);
  }
  QObject::connect(dialog_, &QFileDialog::fileSelected, dialog_, std::move(chosen));
  return dialog_;
}

}  // namespace zephyx
