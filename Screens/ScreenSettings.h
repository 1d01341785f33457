#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <cstdint>

namespace zephyx {

class UserDefaults;

/// The shared preferences that the screens use. Main thread.
class ScreenSettings : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the program")
  Q_PROPERTY(int historyLimit READ historyLimit WRITE setHistoryLimit NOTIFY historyLimitChanged)
  Q_PROPERTY(QString settingsShortcut READ settingsShortcut NOTIFY settingsShortcutChanged)
  Q_PROPERTY(bool hasSettingsShortcut READ hasSettingsShortcut NOTIFY settingsShortcutChanged)
  Q_PROPERTY(QStringList dismissedNotices READ dismissedNotices NOTIFY dismissedNoticesChanged)
  Q_PROPERTY(bool translateWide READ translateWide NOTIFY translateWideChanged)

 public:
  static constexpr int minimumHistoryLimit = 10;
  static constexpr int maximumHistoryLimit = 100'000;

  explicit ScreenSettings(UserDefaults& userDefaults) : userDefaults_(userDefaults) {}

  int historyLimit() const;
  void setHistoryLimit(int limit);

  /// In words, for example "Super+Shift+K".
  QString settingsShortcut() const;
  bool hasSettingsShortcut() const;
  Q_INVOKABLE bool isSettingsShortcut(int key, int modifiers) const;
  /// False when the key cannot be one: no modifier besides Shift, or no character.
  Q_INVOKABLE bool recordSettingsShortcut(int key, int modifiers);
  Q_INVOKABLE void clearSettingsShortcut();

  /// One of `directionChoices` and one of `toneChoices`, by their "id".
  QString translateDirection() const;
  void setTranslateDirection(const QString& direction);
  QString improveTone() const;
  void setImproveTone(const QString& tone);
  /// The translate panel shows the text and the result side by side.
  bool translateWide() const;
  void setTranslateWide(bool wide);

  /// What the user has read about this desktop and does not want to see again.
  QStringList dismissedNotices() const;
  Q_INVOKABLE void dismissNotice(const QString& id);

  void countShortcutUse(std::int64_t id);

 signals:
  void historyLimitChanged();
  void settingsShortcutChanged();
  void translateWideChanged();
  void dismissedNoticesChanged();

 private:
  QString choice(const char* key, const QVariantList& choices) const;

  UserDefaults& userDefaults_;
};

}  // namespace zephyx
