#include "Screens/ServerSettings.h"

#include <algorithm>
#include <utility>

#include "Platform/Keychain.h"
#include "Platform/UserDefaults.h"

namespace zephyx {
namespace {

constexpr auto addressKey = "flutter.ai.serverAddress";
constexpr auto modelKey = "flutter.ai.serverModel";
/// That there is a key, and of which server. Asking the secret store itself could make it ask the
/// user for a password.
constexpr auto storedKeyPrefix = "flutter.ai.serverKeyStored.";
constexpr auto keychainServicePrefix = "Zephyx AI server ";
constexpr qsizetype longestModel = 200;

QString read(const UserDefaults& userDefaults, const char* key) {
  return QString::fromStdString(userDefaults.string(key).value_or(""));
}

void write(UserDefaults& userDefaults, const char* key, const QString& text) {
  if (text.isEmpty())
    userDefaults.removeObject(key);
  else
    userDefaults.setString(key, text.toStdString());
}

QString storeIsMissing() {
  return ServerSettings::tr("this session has no secret store (such as GNOME Keyring or KWallet).");
}

std::string keychainService(const std::string& origin) {
  return keychainServicePrefix + origin;
}

}  // namespace

ServerSettings::ServerSettings(UserDefaults& userDefaults, Keychain& keychain)
    : userDefaults_(userDefaults), keychain_(keychain) {}

QString ServerSettings::address() const {
  return refusedAddress_.value_or(read(userDefaults_, addressKey));
}

void ServerSettings::setAddress(const QString& address) {
  const QString typed = address.trimmed();
  if (typed == this->address()) return;
  refusedAddress_.reset();
  if (typed.isEmpty() || std::holds_alternative<QUrl>(chatEndpoint(typed)))
    write(userDefaults_, addressKey, typed);
  else
    refusedAddress_ = typed;
  keyProblem_.clear();
  emit serverChanged();
  emit keyChanged();
}

QString ServerSettings::model() const {
  return read(userDefaults_, modelKey);
}

void ServerSettings::setModel(const QString& model) {
  if (model.trimmed() == this->model()) return;
  write(userDefaults_, modelKey, model.trimmed().left(longestModel));
  emit serverChanged();
}

std::optional<std::variant<QUrl, QString>> ServerSettings::endpoint() const {
  const QString text = address();
  if (text.isEmpty()) return std::nullopt;
  return chatEndpoint(text);
}

QString ServerSettings::addressProblem() const {
  const auto found = endpoint();
  const auto* problem = found ? std::get_if<QString>(&*found) : nullptr;
  return problem ? *problem : QString();
}

bool ServerSettings::isLocal() const {
  const auto found = endpoint();
  const auto* url = found ? std::get_if<QUrl>(&*found) : nullptr;
  return url && isLoopback(*url);
}

std::optional<std::string> ServerSettings::origin() const {
  const auto found = endpoint();
  const auto* url = found ? std::get_if<QUrl>(&*found) : nullptr;
  return url ? std::optional(chatOrigin(*url).toStdString()) : std::nullopt;
}

bool ServerSettings::hasKey() const {
  const auto server = origin();
  return server && userDefaults_.string(storedKeyPrefix + *server).has_value();
}

QString ServerSettings::keyProblem() const {
  if (!keyProblem_.isEmpty() || hasStore_) return keyProblem_;
  if (hasKey()) return tr("The key cannot be read: ") + storeIsMissing();
  return isLocal() ? QString() : tr("No key can be kept: ") + storeIsMissing();
}

void ServerSettings::lookForStore() {
  queue_.run([&keychain = keychain_] { return keychain.isAvailable(); },
             guard_.wrap([this](bool isAvailable) {
               if (std::exchange(hasStore_, isAvailable) != isAvailable) emit keyChanged();
             }));
}

void ServerSettings::storeKey(const QString& key) {
  const auto server = origin();
  const QByteArray secret = key.trimmed().toUtf8();
  QString problem;
  if (!server)
    problem = tr("Enter the server's address first.");
  else if (!isUsableKey(secret))
    problem = tr("This cannot be a key: it holds characters that no key has.");
  keyProblem_ = problem;
  if (!problem.isEmpty()) return emit keyChanged();
  ++working_;
  emit keyChanged();
  queue_.run(
      [&keychain = keychain_, service = keychainService(*server), secret] {
        if (!keychain.isAvailable()) return std::pair(false, false);
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(secret.constData());
        return std::pair(
            true, keychain.setPassword(service, {bytes, static_cast<std::size_t>(secret.size())}));
      },
      guard_.wrap([this, server = *server](std::pair<bool, bool> end) {
        const auto [available, stored] = end;
        hasStore_ = available;
        if (stored) return finishKeyWork(server, true, {});
        --working_;
        keyProblem_ = available ? tr("The secret store did not take the key.")
                                : tr("The key was not kept: ") + storeIsMissing();
        emit keyChanged();
      }));
}

void ServerSettings::removeKey() {
  const auto server = origin();
  if (!server) return;
  ++working_;
  keyProblem_.clear();
  emit keyChanged();
  queue_.run([&keychain = keychain_,
              service = keychainService(*server)] { return keychain.deletePassword(service); },
             guard_.wrap([this, server = *server](bool removed) {
               finishKeyWork(server, !removed,
                             removed ? QString() : tr("The secret store did not let the key go."));
             }));
}

void ServerSettings::finishKeyWork(const std::string& origin, bool stored, const QString& problem) {
  --working_;
  keyProblem_ = problem;
  if (stored)
    userDefaults_.setString(storedKeyPrefix + origin, "yes");
  else
    userDefaults_.removeObject(storedKeyPrefix + origin);
  emit keyChanged();
}

void ServerSettings::withServer(const QUrl& endpoint,
                                std::function<void(std::optional<ChatServer>)> use) {
  const std::string server = chatOrigin(endpoint).toStdString();
  if (!userDefaults_.string(storedKeyPrefix + server))
    return use(ChatServer{.endpoint = endpoint, .model = model(), .key = {}});
  queue_.run([&keychain = keychain_,
              service = keychainService(server)] { return keychain.password(service); },
             guard_.wrap([this, endpoint, use = std::move(use)](std::optional<Bytes> secret) {
               if (!secret) return use(std::nullopt);
               const QByteArray key(reinterpret_cast<const char*>(secret->data()),
                                    static_cast<qsizetype>(secret->size()));
               use(ChatServer{.endpoint = endpoint, .model = model(), .key = key});
             }));
}

}  // namespace zephyx
