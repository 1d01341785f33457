#include "Screens/ScreenSettings.h"

#include <QtCore/QChar>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <algorithm>
#include <optional>

#include "Platform/UserDefaults.h"
#include "Screens/Prompts.h"

namespace zephyx {
namespace {

constexpr auto historyLimitKey = "flutter.clipboardHistoryLimit";
constexpr auto settingsShortcutKey = "flutter.localShortcut.openSettings.v1";
constexpr auto dismissedNoticesKey = "flutter.dismissedNotices";
constexpr auto shortcutUseKey = "flutter.shortcutUse.";
constexpr auto translateDirectionKey = "flutter.ai.translateDirection";
constexpr auto improveToneKey = "flutter.ai.improveTone";
constexpr auto translateWideKey = "flutter.ai.translateWide";
constexpr int defaultHistoryLimit = 500;

struct Shortcut {
  QString keyChar;
  Qt::KeyboardModifiers modifiers;
};

const Shortcut defaultSettingsShortcut{QStringLiteral(","), Qt::MetaModifier};

struct NamedModifier {
  const char* key;
  Qt::KeyboardModifier modifier;
  const char* word;
};
constexpr NamedModifier namedModifiers[] = {
    {"meta", Qt::MetaModifier, "Super"},
    {"control", Qt::ControlModifier, "Ctrl"},
    {"alt", Qt::AltModifier, "Alt"},
    {"shift", Qt::ShiftModifier, "Shift"},
};

std::optional<Shortcut> parse(const std::optional<std::string>& text) {
  if (!text) return std::nullopt;
  const QJsonObject object = QJsonDocument::fromJson(QByteArray::fromStdString(*text)).object();
  Shortcut shortcut{object["keyChar"].toString(), {}};
  if (shortcut.keyChar.isEmpty()) return std::nullopt;
  for (const auto& named : namedModifiers)
    shortcut.modifiers.setFlag(named.modifier, object[QLatin1String(named.key)].toBool());
  return shortcut;
}

// Keys up to this are characters; the others are named keys and have none.
std::optional<QString> characterOf(int key) {
  if (key <= Qt::Key_Space || key >= Qt::Key_Escape) return std::nullopt;
  return QString(QChar(static_cast<char16_t>(key))).toLower();
}

}  // namespace

int ScreenSettings::historyLimit() const {
  const auto text = userDefaults_.string(historyLimitKey);
  bool isNumber = false;
  const int limit = text ? QByteArray::fromStdString(*text).toInt(&isNumber) : 0;
  return isNumber ? std::clamp(limit, minimumHistoryLimit, maximumHistoryLimit)
                  : defaultHistoryLimit;
}

void ScreenSettings::setHistoryLimit(int limit) {
  limit = std::clamp(limit, minimumHistoryLimit, maximumHistoryLimit);
  if (limit == historyLimit()) return;
  userDefaults_.setString(historyLimitKey, std::to_string(limit));
  emit historyLimitChanged();
}

QString ScreenSettings::settingsShortcut() const {
  const auto shortcut =
      parse(userDefaults_.string(settingsShortcutKey)).value_or(defaultSettingsShortcut);
  QStringList words;
  for (const auto& named : namedModifiers)
    if (shortcut.modifiers.testFlag(named.modifier)) words << QLatin1String(named.word);
  words << shortcut.keyChar.toUpper();
  return words.join('+');
}

bool ScreenSettings::hasSettingsShortcut() const {
  return parse(userDefaults_.string(settingsShortcutKey)).has_value();
}

bool ScreenSettings::isSettingsShortcut(int key, int modifiers) const {
  const auto shortcut =
      parse(userDefaults_.string(settingsShortcutKey)).value_or(defaultSettingsShortcut);
  return characterOf(key) == shortcut.keyChar &&
         Qt::KeyboardModifiers::fromInt(modifiers) == shortcut.modifiers;
}

bool ScreenSettings::recordSettingsShortcut(int key, int modifiers) {
  const auto character = characterOf(key);
  const auto flags = Qt::KeyboardModifiers::fromInt(modifiers);
  if (!character || !(flags & (Qt::MetaModifier | Qt::ControlModifier | Qt::AltModifier)))
    return false;
  QJsonObject object{{"keyChar", *character}};
  for (const auto& named : namedModifiers)
    object[QLatin1String(named.key)] = flags.testFlag(named.modifier);
  userDefaults_.setString(settingsShortcutKey,
                          QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString());
  emit settingsShortcutChanged();
  return true;
}

void ScreenSettings::clearSettingsShortcut() {
  userDefaults_.removeObject(settingsShortcutKey);
  emit settingsShortcutChanged();
}

QString ScreenSettings::choice(const char* key, const QVariantList& choices) const {
  QString stored = QString::fromStdString(userDefaults_.string(key).value_or(""));
  for (const QVariant& choice : choices)
    if (choice.toMap()["id"] == stored) return stored;
  return choices.front().toMap()["id"].toString();
}

QString ScreenSettings::translateDirection() const {
  return choice(translateDirectionKey, directionChoices());
}

void ScreenSettings::setTranslateDirection(const QString& direction) {
  userDefaults_.setString(translateDirectionKey, direction.toStdString());
}

QString ScreenSettings::improveTone() const {
  return choice(improveToneKey, toneChoices());
}

void ScreenSettings::setImproveTone(const QString& tone) {
  userDefaults_.setString(improveToneKey, tone.toStdString());
}

bool ScreenSettings::translateWide() const {
  return userDefaults_.string(translateWideKey) == "yes";
}

void ScreenSettings::setTranslateWide(bool wide) {
  if (wide == translateWide()) return;
  userDefaults_.setString(translateWideKey, wide ? "yes" : "no");
  emit translateWideChanged();
}

QStringList ScreenSettings::dismissedNotices() const {
  return QString::fromStdString(userDefaults_.string(dismissedNoticesKey).value_or(""))
      .split(' ', Qt::SkipEmptyParts);
}

void ScreenSettings::dismissNotice(const QString& id) {
  auto ids = dismissedNotices();
  if (ids.contains(id)) return;
  ids << id;
  userDefaults_.setString(dismissedNoticesKey, ids.join(' ').toStdString());
  emit dismissedNoticesChanged();
}

void ScreenSettings::countShortcutUse(std::int64_t id) {
  const std::string key = shortcutUseKey + std::to_string(id);
  const auto count =
      QByteArray::fromStdString(userDefaults_.string(key).value_or("0")).toLongLong();
  userDefaults_.setString(key, std::to_string(count + 1));
}

}  // namespace zephyx
