#include "Screens/NotesFile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QSaveFile>

#include "Screens/Age.h"

namespace zephyx {
namespace {

constexpr qint64 maximumFileBytes = 64 * 1024 * 1024;

QString named(const char* sentence, const QString& path) {
  return QString::fromUtf8(sentence).arg(QFileInfo(path).fileName());
}

}  // namespace

QString writeNotesFile(const QString& path, const std::vector<Note>& notes) {
  QJsonArray array;
  for (const Note& note : notes)
    array.append(QJsonObject{{"title", noteTitle(note.text)},
                             {"text", note.text},
                             {"modified", static_cast<qint64>(note.modifiedEpochMs)}});
  const QByteArray bytes = QJsonDocument(array).toJson();
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
    return named("“%1” could not be written: ", path) + file.errorString();
  return {};
}

std::variant<std::vector<Note>, QString> readNotesFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return named("“%1” could not be read: ", path) + file.errorString();
  if (file.size() > maximumFileBytes) return named("“%1” is too large to hold notes.", path);
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
  if (error.error != QJsonParseError::NoError || !document.isArray())
    return named("“%1” is damaged or holds no notes. Nothing was imported.", path);
  std::vector<Note> notes;
  const std::int64_t now = nowEpochMs();
  const QJsonArray entries = document.array();
  for (const auto& entry : entries) {
    const QJsonObject object = entry.toObject();
    if (!object["text"].isString())
      return named("“%1” holds something that is not a note. Nothing was imported.", path);
    notes.push_back(
        {.text = object["text"].toString(), .modifiedEpochMs = object["modified"].toInteger(now)});
  }
  return notes;
}

}  // namespace zephyx
