#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <optional>

#include "Channel/MethodChannel.h"
#include "Platform/LifetimeGuard.h"
#include "Platform/Linux/Engines/ScreenProgram.h"
#include "Screens/AgentSettings.h"
#include "Screens/FilePanel.h"
#include "Screens/HotkeySettings.h"
#include "Screens/NotesModel.h"
#include "Screens/NotesStore.h"
#include "Screens/PasteShortcut.h"
#include "Screens/ScreenSettings.h"
#include "Screens/ServerSettings.h"
#include "Screens/TextGenerator.h"
#include "Screens/UpdateNotice.h"

namespace zephyx {

/// The notes editor without its picture. Works from its construction on. Main thread.
class MainScreenController : public QObject {
  Q_OBJECT
  QML_NAMED_ELEMENT(MainController)
  QML_UNCREATABLE("made by the program")
  Q_PROPERTY(zephyx::UpdateNotice* updates READ updates CONSTANT)
  Q_PROPERTY(zephyx::NotesModel* notes READ notes CONSTANT)
  Q_PROPERTY(zephyx::ScreenSettings* settings READ settings CONSTANT)
  Q_PROPERTY(zephyx::ServerSettings* server READ server CONSTANT)
  Q_PROPERTY(zephyx::HotkeySettings* hotkeys READ hotkeys CONSTANT)
  Q_PROPERTY(zephyx::AgentSettings* agents READ agents CONSTANT)
  Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
  Q_PROPERTY(int currentRow READ currentRow NOTIFY currentChanged)
  Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
  Q_PROPERTY(QString edited READ edited NOTIFY currentChanged)
  Q_PROPERTY(bool showsSettings READ showsSettings WRITE setShowsSettings NOTIFY pageChanged)
  Q_PROPERTY(QString message READ message NOTIFY messageChanged)
  Q_PROPERTY(bool canUndo READ canUndo NOTIFY messageChanged)

 public:
  explicit MainScreenController(ScreenServices services);
  ~MainScreenController() override;

  UpdateNotice* updates() { return &updates_; }
  NotesModel* notes() { return &model_; }
  ScreenSettings* settings() { return &settings_; }
  ServerSettings* server() { return &server_; }
  HotkeySettings* hotkeys() { return &hotkeys_; }
  AgentSettings* agents() { return &agents_; }
  TextGenerator& generator() { return generator_; }
  QString searchText() const { return searchText_; }
  void setSearchText(const QString& text);
  int currentRow() const { return model_.rowOf(current_.id); }
  QString text() const { return current_.text; }
  void setText(const QString& text);
  /// When the open note was last changed, in words.
  QString edited() const;
  bool showsSettings() const { return showsSettings_; }
  void setShowsSettings(bool shows);
  QString message() const { return message_; }
  bool canUndo() const { return deleted_.has_value(); }

  /// Shows the settings when these keys are their shortcut.
  Q_INVOKABLE bool openSettingsBy(int key, int modifiers);
  /// The picture has an editor that inserts what `textPasted` brings.
  Q_INVOKABLE void setHasEditor(bool hasEditor) { hasEditor_ = hasEditor; }
  /// The answer to `selectionWanted`.
  Q_INVOKABLE void giveSelection(const QString& selection) { selection_ = selection; }
  Q_INVOKABLE void newNote();
  Q_INVOKABLE void openNote(int row);
  Q_INVOKABLE void deleteNote();
  Q_INVOKABLE void undoDelete();
  Q_INVOKABLE void dismissMessage();
  Q_INVOKABLE void exportNotes();
  Q_INVOKABLE void importNotes();
  Q_INVOKABLE void quit();
  /// Writes at once what was typed. False when that failed; it is tried again.
  Q_INVOKABLE bool save();

  void exportTo(const QString& path);
  void importFrom(const QString& path);

 signals:
  void searchTextChanged();
  void currentChanged();
  void textChanged();
  void pageChanged();
  void messageChanged();
  /// To be inserted at the cursor, in the place of the selection.
  void textPasted(const QString& text);
  /// The picture gives what is selected in its editor, at once.
  void selectionWanted();

 private:
  void handle(const MethodCall& call, MethodResult result);
  void pasteIntoEditor();
  void pasteText(const QString& pasted);
  void handOverText(const Value& arguments);
  void acceptText(const Value& arguments);
  /// False when the note must stay: its text is nowhere else.
  bool leaveNote();
  bool write();
  void open(Note note);
  void reload();
  void tell(const QString& message);
  void tellTooLong();

  ScreenSettings settings_;
  NotesStore store_;
  NotesModel model_;
  Note current_;  ///< without an identifier until it has text
  std::optional<Note> deleted_;
  QString searchText_;
  QString selection_;
  QString message_;
  bool showsSettings_ = false;
  bool hasEditor_ = false;
  bool unsaved_ = false;
  bool failing_ = false;  ///< to save
  QTimer saveTimer_;
  FilePanel filePanel_;
  ClipboardTextReader readClipboardText_;
  PasteShortcut pasteShortcut_;
  ServerSettings server_;
  MethodChannel channel_;
  UpdateNotice updates_;
  TextGenerator generator_;
  HotkeySettings hotkeys_;
  AgentSettings agents_;
  LifetimeGuard guard_;
};

}  // namespace zephyx
