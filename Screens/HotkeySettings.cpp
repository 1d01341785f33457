#include "Screens/HotkeySettings.h"

#include <QtCore/QVariant>
#include <algorithm>
#include <utility>

namespace zephyx {
namespace {

// To the host.
constexpr auto getMethod = "hotkeysGet";
constexpr auto setMethod = "hotkeySet";
constexpr auto resetMethod = "hotkeyReset";
constexpr auto resetAllMethod = "hotkeysResetAll";
constexpr auto startRecordingMethod = "hotkeyStartRecording";
constexpr auto cancelRecordingMethod = "hotkeyCancelRecording";

constexpr std::int64_t openerId = 1;

struct Purpose {
  std::int64_t id;
  const char* name;
  const char* words;
};
constexpr Purpose purposes[] = {
    {openerId, "Show Zephyx", "Opens the notes, or hides them."},
    {2, "Clipboard panel", "Shows what was copied, ready to be pasted."},
    {3, "Translate", "Translates the selected text."},
    {4, "Correct spelling", "Corrects the selected text."},
    {5, "Improve", "Rewrites the selected text."},
    {6, "Last result", "Brings the last AI result back."},
    {8, "Lock the trackpad", "Keeps it still while you clean it."},
    {9, "Lock the keyboard", "Keeps it still while you clean it."},
    {10, "Mute the microphone", "Switches it off and on."},
};

// As the host writes a combination: these, in this order, then the key.
struct Modifier {
  char16_t sign;
  std::int64_t flag;
  const char* word;
};
constexpr Modifier modifiers[] = {{u'⌃', 0x1000, "Ctrl"},
                                  {u'⌥', 0x0800, "Alt"},
                                  {u'⇧', 0x0200, "Shift"},
                                  {u'⌘', 0x0100, "Super"}};

QStringList keyNames(std::int64_t flags, QString display) {
  QStringList names;
  for (const Modifier& modifier : modifiers) {
    if (!(flags & modifier.flag)) continue;
    names << QLatin1String(modifier.word);
    if (display.startsWith(QChar(modifier.sign))) display.remove(0, 1);
  }
  names << display;
  return names;
}

const Purpose* purposeOf(std::int64_t id) {
  const auto* found = std::find_if(std::begin(purposes), std::end(purposes),
                                   [id](const Purpose& purpose) { return purpose.id == id; });
  return found == std::end(purposes) ? nullptr : found;
}

QString failure(const MethodReply& reply) {
  const auto* error = std::get_if<MethodError>(&reply);
  if (error && !error->message.empty()) return QString::fromStdString(error->message);
  return HotkeySettings::tr("This could not be done.");
}

}  // namespace

HotkeySettings::HotkeySettings(MethodChannel& channel, std::chrono::milliseconds timeout)
    : channel_(channel), timeout_(timeout) {}

int HotkeySettings::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant HotkeySettings::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const Row& row = rows_[static_cast<std::size_t>(index.row())];
  const Purpose* purpose = purposeOf(row.id);
  switch (role) {
    case nameRole:
      return purpose ? tr(purpose->name) : tr("Hotkey %1").arg(row.id);
    case purposeRole:
      return purpose ? tr(purpose->words) : QString();
    case keysRole:
      return row.keys;
    case usualRole:
      return row.usual;
    case recordingRole:
      return index.row() == recordingRow_;
    case problemRole:
      return row.problem;
    default:
      return {};
  }
}

QHash<int, QByteArray> HotkeySettings::roleNames() const {
  return {{nameRole, "name"},   {purposeRole, "purpose"},     {keysRole, "keys"},
          {usualRole, "usual"}, {recordingRole, "recording"}, {problemRole, "problem"}};
}

bool HotkeySettings::allUsual() const {
  return std::all_of(rows_.begin(), rows_.end(), [](const Row& row) { return row.usual; });
}

QString HotkeySettings::opener() const {
  const int row = rowOf(openerId);
  return row < 0 ? QString() : rows_[static_cast<std::size_t>(row)].keys.join('+');
}

int HotkeySettings::rowOf(std::int64_t id) const {
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [id](const Row& row) { return row.id == id; });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

std::optional<HotkeySettings::Row> HotkeySettings::rowFrom(const Value& payload) {
  const Map* map = payload.asMap();
  if (!map) return std::nullopt;
  const Value* id = map->find("id");
  const Value* flags = map->find("modifiers");
  const Value* display = map->find("display");
  const Value* usual = map->find("isDefault");
  if (!id || !flags || !display || !usual || !id->asInteger() || !flags->asInteger() ||
      !display->asString() || !usual->asBool())
    return std::nullopt;
  return Row{.id = *id->asInteger(),
             .keys = keyNames(*flags->asInteger(), QString::fromStdString(*display->asString())),
             .usual = *usual->asBool(),
             .problem = {}};
}

void HotkeySettings::refresh() {
  channel_.invokeMethod(getMethod, {},
                        guard_.wrap([this](const MethodReply& reply) { takeAll(reply); }));
}

void HotkeySettings::takeAll(const MethodReply& reply) {
  const auto* value = std::get_if<Value>(&reply);
  const List* list = value ? value->asList() : nullptr;
  if (!list) return;
  std::vector<Row> rows;
  for (const Value& payload : *list)
    if (auto row = rowFrom(payload)) rows.push_back(std::move(*row));
  const bool same =
      std::equal(rows.begin(), rows.end(), rows_.begin(), rows_.end(),
                 [](const Row& left, const Row& right) { return left.id == right.id; });
  // Rows that stay are kept, so that the one with the keyboard's focus does too.
  if (same) {
    for (std::size_t at = 0; at < rows.size(); ++at) rows[at].problem = rows_[at].problem;
    rows_ = std::move(rows);
    if (!rows_.empty()) emit dataChanged(index(0), index(rowCount() - 1));
  } else {
    cancelRecording();
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
  }
  emit hotkeysChanged();
}

void HotkeySettings::record(int row) {
  if (row < 0 || row >= rowCount()) return;
  for (int at = 0; at < rowCount(); ++at) setProblem(at, {});
  const int previous = std::exchange(recordingRow_, row);
  if (previous >= 0) changed(previous);
  changed(row);
  emit recordingChanged();
  recordingTime_.start();
  const std::int64_t id = rows_[static_cast<std::size_t>(row)].id;
  channel_.invokeMethod(startRecordingMethod, Map{{"id", id}},
                        guard_.wrap([this, id, number = ++recordings_](const MethodReply& reply) {
                          if (isRecording() && number == recordings_) takeRecording(id, reply);
                        }));
}

void HotkeySettings::takeRecording(std::int64_t id, const MethodReply& reply) {
  const bool isLate = recordingTime_.elapsed() >= timeout_.count();
  const int row = recordingRow_;
  endRecording();
  const auto* value = std::get_if<Value>(&reply);
  if (!value) return setProblem(row, failure(reply));
  const Map* map = value->asMap();
  const Value* keyCode = map ? map->find("keyCode") : nullptr;
  const Value* flags = map ? map->find("modifiers") : nullptr;
  if (!keyCode || !flags) {
    if (isLate) setProblem(row, tr("Nothing was pressed in time. The old combination stays."));
    return;
  }
  channel_.invokeMethod(setMethod, Map{{"id", id}, {"keyCode", *keyCode}, {"modifiers", *flags}},
                        guard_.wrap([this, id](const MethodReply& end) { takeOne(id, end); }));
}

void HotkeySettings::takeOne(std::int64_t id, const MethodReply& reply) {
  const int row = rowOf(id);
  if (row < 0) return;
  const auto* value = std::get_if<Value>(&reply);
  auto updated = value ? rowFrom(*value) : std::nullopt;
  if (!updated || updated->id != id) return setProblem(row, failure(reply));
  rows_[static_cast<std::size_t>(row)] = std::move(*updated);
  changed(row);
  emit hotkeysChanged();
}

void HotkeySettings::cancelRecording() {
  if (!isRecording()) return;
  endRecording();
  channel_.invokeMethod(cancelRecordingMethod);
}

void HotkeySettings::endRecording() {
  const int row = std::exchange(recordingRow_, -1);
  if (row >= 0) changed(row);
  emit recordingChanged();
}

void HotkeySettings::reset(int row) {
  if (row < 0 || row >= rowCount()) return;
  cancelRecording();
  setProblem(row, {});
  const std::int64_t id = rows_[static_cast<std::size_t>(row)].id;
  channel_.invokeMethod(resetMethod, Map{{"id", id}},
                        guard_.wrap([this, id](const MethodReply& end) { takeOne(id, end); }));
}

void HotkeySettings::resetAll() {
  cancelRecording();
  for (int row = 0; row < rowCount(); ++row) setProblem(row, {});
  channel_.invokeMethod(resetAllMethod, {},
                        guard_.wrap([this](const MethodReply& reply) { takeAll(reply); }));
}

void HotkeySettings::setProblem(int row, const QString& problem) {
  if (std::exchange(rows_[static_cast<std::size_t>(row)].problem, problem) != problem) changed(row);
}

void HotkeySettings::changed(int row) {
  emit dataChanged(index(row), index(row));
}

}  // namespace zephyx
