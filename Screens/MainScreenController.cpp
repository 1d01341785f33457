#include "Screens/MainScreenController.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "Screens/Age.h"
#include "Screens/NotesFile.h"
#include "Screens/ScreenFolder.h"

namespace zephyx {
namespace {

// From the host.
constexpr auto pasteIntoEditorMethod = "pasteIntoEditor";
constexpr auto exportAllNotesMethod = "exportAllNotes";
constexpr auto importNotesMethod = "importNotes";
constexpr auto openSettingsMethod = "openSettings";
constexpr auto shortcutUsedMethod = "shortcutUsed";
constexpr auto telemetryEventMethod = "telemetryEvent";
constexpr auto translateMethod = "headlessTranslate";
constexpr auto cancelTranslateMethod = "headlessTranslateCancel";
constexpr auto captureEditorMethod = "headlessCaptureEditor";
constexpr auto acceptToEditorMethod = "headlessAcceptToEditor";
// To the host.
constexpr auto showEditorTextMethod = "headlessShowEditorText";
constexpr auto quitMethod = "quit";

constexpr auto saveDelay = std::chrono::milliseconds(250);
constexpr auto retryDelay = std::chrono::seconds(5);
// Editing longer notes would no longer be fluent.
constexpr qsizetype maximumNoteCharacters = 2'000'000;

constexpr qsizetype listedCharacters = 400;

QString counted(std::size_t notes) {
  return notes == 1 ? QStringLiteral("1 note was") : QStringLiteral("%1 notes were").arg(notes);
}

}  // namespace

MainScreenController::MainScreenController(ScreenServices services)
    : settings_(services.userDefaults),
      store_(screenFolder(services.directories)),
      readClipboardText_(services.readClipboardText),
      pasteShortcut_(services.readClipboardText, maximumNoteCharacters, [this] { tellTooLong(); }),
      server_(services.userDefaults, services.keychain),
      channel_(services.messenger, screenChannelName, reportToLog),
      updates_(channel_),
      generator_(server_, channel_),
      hotkeys_(channel_),
      agents_(channel_) {
  saveTimer_.setSingleShot(true);
  connect(&saveTimer_, &QTimer::timeout, this, &MainScreenController::save);
  reload();
  openNote(0);
  switch (store_.condition()) {
    case StoreCondition::opened:
    case StoreCondition::created:
      break;
    case StoreCondition::replacedDamaged:
      tell(tr("The notes were damaged. They were set aside, and a new collection was begun."));
      break;
    case StoreCondition::replacedNewer:
      tell(tr("The notes are of a newer version. They were set aside."));
      break;
    case StoreCondition::notKept:
      tell(tr("Notes cannot be written here and last only until the program ends."));
      break;
  }
  channel_.setMethodCallHandler(guard_.wrap(
      [this](const MethodCall& call, MethodResult result) { handle(call, std::move(result)); }));
}

MainScreenController::~MainScreenController() {
  channel_.setMethodCallHandler({});
  save();
}

void MainScreenController::handle(const MethodCall& call, MethodResult result) {
  if (call.method == translateMethod) {
    generator_.translate(call.arguments);
  } else if (call.method == cancelTranslateMethod) {
    generator_.cancel();
  } else if (call.method == captureEditorMethod) {
    handOverText(call.arguments);
  } else if (call.method == acceptToEditorMethod) {
    acceptText(call.arguments);
  } else if (call.method == pasteIntoEditorMethod) {
    pasteIntoEditor();
  } else if (call.method == exportAllNotesMethod) {
    exportNotes();
  } else if (call.method == importNotesMethod) {
    importNotes();
  } else if (call.method == openSettingsMethod) {
    setShowsSettings(true);
  } else if (call.method == shortcutUsedMethod) {
    const Map* map = call.arguments.asMap();
    const Value* id = map ? map->find("id") : nullptr;
    if (const auto number = id ? id->asInteger() : std::nullopt)
      settings_.countShortcutUse(*number);
  } else if (call.method != telemetryEventMethod && !updates_.handle(call)) {
    return result.notImplemented();
  }
  result.success();
}

void MainScreenController::pasteIntoEditor() {
  readClipboardText_(guard_.wrap([this](std::optional<std::string> text) {
    if (text && !text->empty()) pasteText(QString::fromStdString(*text));
  }));
}

void MainScreenController::pasteText(const QString& pasted) {
  if (pasted.size() + current_.text.size() > maximumNoteCharacters) return tellTooLong();
  setShowsSettings(false);
  if (hasEditor_) {
    emit textPasted(pasted);
  } else {
    setText(current_.text + pasted);
  }
}

void MainScreenController::handOverText(const Value& arguments) {
  const Map* map = arguments.asMap();
  const Value* mode = map ? map->find("mode") : nullptr;
  selection_.clear();
  if (!showsSettings_) emit selectionWanted();
  const QString text = selection_.isEmpty() ? current_.text : std::exchange(selection_, {});
  Map message{{"text", text.toStdString()}};
  if (mode && mode->asString()) message.append("mode", *mode);
  channel_.invokeMethod(showEditorTextMethod, std::move(message));
}

void MainScreenController::acceptText(const Value& arguments) {
  const Map* map = arguments.asMap();
  const Value* text = map ? map->find("text") : nullptr;
  if (!text || !text->asString() || text->asString()->empty()) return;
  pasteText(QString::fromStdString(*text->asString()));
  save();
}

void MainScreenController::setText(const QString& text) {
  if (text == current_.text) return;
  current_.text = text;
  current_.modifiedEpochMs = nowEpochMs();
  emit textChanged();
  unsaved_ = true;
  // Not started anew by each letter, so that steady typing is saved too.
  if (!saveTimer_.isActive()) saveTimer_.start(saveDelay);
}

bool MainScreenController::save() {
  if (!unsaved_) return true;
  unsaved_ = !write();
  if (unsaved_)
    saveTimer_.start(retryDelay);
  else
    saveTimer_.stop();
  if (std::exchange(failing_, unsaved_) != unsaved_)
    tell(unsaved_ ? tr("The note cannot be saved now: the disk may be full. It stays open, and "
                       "saving is tried again.")
                  : tr("The note is saved."));
  return !unsaved_;
}

bool MainScreenController::write() {
  if (current_.id != 0) {
    if (!store_.update(current_)) return false;
  } else if (!current_.text.trimmed().isEmpty()) {
    const auto id = store_.add(current_.text, current_.modifiedEpochMs);
    if (!id) return false;
    current_.id = *id;
  } else {
    return true;
  }
  model_.moveToTop({.id = current_.id,
                    .text = current_.text.left(listedCharacters),
                    .modifiedEpochMs = current_.modifiedEpochMs});
  emit currentChanged();
  return true;
}

// A note that was left without text is not worth keeping.
bool MainScreenController::leaveNote() {
  if (!save()) return false;
  if (current_.id == 0 || !current_.text.trimmed().isEmpty()) return true;
  store_.remove(current_.id);
  model_.remove(current_.id);
  return true;
}

void MainScreenController::open(Note note) {
  current_ = std::move(note);
  unsaved_ = failing_ = false;
  emit textChanged();
  emit currentChanged();
}

void MainScreenController::newNote() {
  if (!leaveNote()) return;
  setSearchText({});
  setShowsSettings(false);
  open({});
}

void MainScreenController::openNote(int row) {
  const Note* chosen = model_.note(row);
  const auto id = chosen ? chosen->id : 0;
  if (id != 0 && id == current_.id) return setShowsSettings(false);
  if (!leaveNote()) return;
  setShowsSettings(false);
  const Note* note = model_.note(model_.rowOf(id));
  const auto text = note ? store_.text(id) : std::nullopt;
  if (!text) return open({});
  open({.id = id, .text = *text, .modifiedEpochMs = note->modifiedEpochMs});
}

void MainScreenController::deleteNote() {
  save();
  if (current_.id == 0) return open({});
  const int row = currentRow();
  if (!store_.remove(current_.id)) return tell(tr("The note could not be deleted."));
  tell(tr("“%1” was deleted.").arg(noteTitle(current_.text)));
  deleted_ = std::exchange(current_, {});
  emit messageChanged();
  model_.remove(deleted_->id);
  openNote(std::min(row, model_.rowCount() - 1));
}

void MainScreenController::undoDelete() {
  if (!deleted_ || !leaveNote()) return;
  const auto id = store_.add(deleted_->text, deleted_->modifiedEpochMs);
  if (!id) return tell(tr("The note could not be brought back."));
  dismissMessage();
  setSearchText({});
  reload();
  openNote(model_.rowOf(*id));
}

void MainScreenController::setSearchText(const QString& text) {
  if (std::exchange(searchText_, text) == text) return;
  save();
  reload();
  emit searchTextChanged();
}

void MainScreenController::reload() {
  model_.replace(store_.list(searchText_));
  emit currentChanged();
}

void MainScreenController::setShowsSettings(bool shows) {
  if (!shows) hotkeys_.cancelRecording();
  if (std::exchange(showsSettings_, shows) != shows) emit pageChanged();
}

bool MainScreenController::openSettingsBy(int key, int modifiers) {
  if (!settings_.isSettingsShortcut(key, modifiers)) return false;
  setShowsSettings(true);
  return true;
}

void MainScreenController::exportNotes() {
  filePanel_.chooseForSaving(tr("Export all notes"), QStringLiteral("Notes.json"),
                             guard_.wrap([this](const QString& path) { exportTo(path); }));
}

void MainScreenController::importNotes() {
  filePanel_.chooseForOpening(tr("Import notes"),
                              guard_.wrap([this](const QString& path) { importFrom(path); }));
}

void MainScreenController::exportTo(const QString& path) {
  save();
  const auto notes = store_.all();
  const QString failure = writeNotesFile(path, notes);
  tell(failure.isEmpty() ? tr("%1 exported.").arg(counted(notes.size())) : failure);
}

void MainScreenController::importFrom(const QString& path) {
  const auto read = readNotesFile(path);
  if (const auto* failure = std::get_if<QString>(&read)) return tell(*failure);
  save();
  const auto added = store_.addMissing(std::get<std::vector<Note>>(read));
  if (!added) return tell(tr("The notes could not be written. Nothing was imported."));
  setSearchText({});
  reload();
  if (current_.id == 0 && current_.text.isEmpty()) openNote(0);
  tell(*added == 0 ? tr("These notes are all here already.")
                   : tr("%1 imported.").arg(counted(*added)));
}

void MainScreenController::tellTooLong() {
  tell(tr("The clipboard holds more text than fits into a note."));
}

void MainScreenController::tell(const QString& message) {
  deleted_.reset();
  message_ = message;
  emit messageChanged();
}

void MainScreenController::dismissMessage() {
  tell({});
}

void MainScreenController::quit() {
  save();
  channel_.invokeMethod(quitMethod);
}

QString MainScreenController::edited() const {
  if (current_.id == 0) return tr("New note");
  const QString age = ageText(current_.modifiedEpochMs, nowEpochMs());
  const bool isSpan = age.endsWith("min") || age.endsWith('h') || age.endsWith("days");
  return tr("Edited %1").arg(isSpan ? age + tr(" ago") : age);
}

}  // namespace zephyx
