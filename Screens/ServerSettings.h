#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <functional>
#include <optional>
#include <string>
#include <variant>

#include "Platform/LifetimeGuard.h"
#include "Screens/BackgroundQueue.h"
#include "Screens/ChatServer.h"

namespace zephyx {

class Keychain;
class UserDefaults;

/// The server that writes the texts. Its key lies in the system's secret store, one for each
/// server, so that no server is sent another one's. Main thread; the secret store has a thread.
class ServerSettings : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the program")
  Q_PROPERTY(QString address READ address WRITE setAddress NOTIFY serverChanged)
  Q_PROPERTY(QString model READ model WRITE setModel NOTIFY serverChanged)
  Q_PROPERTY(QString addressProblem READ addressProblem NOTIFY serverChanged)
  Q_PROPERTY(bool isLocal READ isLocal NOTIFY serverChanged)
  Q_PROPERTY(bool hasKey READ hasKey NOTIFY keyChanged)
  Q_PROPERTY(bool busy READ busy NOTIFY keyChanged)
  Q_PROPERTY(QString keyProblem READ keyProblem NOTIFY keyChanged)

 public:
  ServerSettings(UserDefaults& userDefaults, Keychain& keychain);

  QString address() const;
  void setAddress(const QString& address);
  QString model() const;
  void setModel(const QString& model);
  /// Empty when it can be used, or there is none yet.
  QString addressProblem() const;
  bool isLocal() const;

  /// Whether a key was stored for this server.
  bool hasKey() const;
  bool busy() const { return working_ > 0; }
  /// Also that there is no secret store, where one is needed: see `lookForStore`.
  QString keyProblem() const;
  Q_INVOKABLE void lookForStore();
  Q_INVOKABLE void storeKey(const QString& key);
  Q_INVOKABLE void removeKey();

  /// Nothing when none is set up, words when its address cannot be used.
  std::optional<std::variant<QUrl, QString>> endpoint() const;
  /// The server with its key; nothing when the secret store does not give out the one that was
  /// stored. On the main thread, later when there is a key.
  void withServer(const QUrl& endpoint, std::function<void(std::optional<ChatServer>)> use);

 signals:
  void serverChanged();
  void keyChanged();

 private:
  std::optional<std::string> origin() const;
  void finishKeyWork(const std::string& origin, bool stored, const QString& problem);

  UserDefaults& userDefaults_;
  Keychain& keychain_;
  int working_ = 0;
  QString keyProblem_;
  bool hasStore_ = true;  ///< as far as is known
  /// As it was typed last, when it cannot be used. Not kept: it may hold a password.
  std::optional<QString> refusedAddress_;
  BackgroundQueue queue_;
  LifetimeGuard guard_;
};

}  // namespace zephyx
