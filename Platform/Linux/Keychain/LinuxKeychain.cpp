#include "Platform/Linux/Keychain/LinuxKeychain.h"

#include <libsecret/secret.h>

#include <memory>
#include <string_view>
#include <utility>

#include "Platform/Linux/Keychain/ToolCredentials.h"
#include "Platform/Linux/SessionBus.h"

namespace zephyx {
namespace {

constexpr const char* serviceAttribute = "service";
constexpr const char* contentType = "application/octet-stream";
constexpr const char* storeName = "org.freedesktop.secrets";
/// A bus waits up to two minutes for a store that does not come up.
constexpr int patienceMilliseconds = 3000;

template <auto release>
struct Releaser {
  template <typename T>
  void operator()(T* object) const {
    release(object);
  }
};

using Error = std::unique_ptr<GError, Releaser<g_error_free>>;
using SecretValuePointer = std::unique_ptr<SecretValue, Releaser<secret_value_unref>>;
using Attributes = std::unique_ptr<GHashTable, Releaser<g_hash_table_unref>>;
using Connection = std::unique_ptr<GDBusConnection, Releaser<g_object_unref>>;
using Reply = std::unique_ptr<GVariant, Releaser<g_variant_unref>>;

Reply askBus(GDBusConnection& bus, const char* method, GVariant* arguments) {
  return Reply(g_dbus_connection_call_sync(
      &bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
      arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, patienceMilliseconds, nullptr, nullptr));
}

/// The session's bus; null when there is none.
Connection sessionBus() {
  // Asking the library for a bus that is not there starts one.
  if (!hasSessionBus()) return nullptr;
  Connection bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  if (bus) g_dbus_connection_set_exit_on_close(bus.get(), FALSE);  // the program outlives it
  return bus;
}

bool isRunning(GDBusConnection& bus) {
  gboolean hasOwner = FALSE;
  const auto reply = askBus(bus, "NameHasOwner", g_variant_new("(s)", storeName));
  if (reply) g_variant_get(reply.get(), "(b)", &hasOwner);
  return hasOwner;
}

bool canBeStarted(GDBusConnection& bus) {
  const auto reply = askBus(bus, "ListActivatableNames", nullptr);
  if (!reply) return false;
  const Reply names(g_variant_get_child_value(reply.get(), 0));
  bool isListed = false;
  for (gsize at = 0; at < g_variant_n_children(names.get()) && !isListed; ++at) {
    const Reply name(g_variant_get_child_value(names.get(), at));
    isListed = std::string_view(g_variant_get_string(name.get(), nullptr)) == storeName;
  }
  return isListed;
}

/// Whether a secret store can be asked now; the bus may have to start it.
bool isReachable() {
  const auto bus = sessionBus();
  return bus && (isRunning(*bus) ||
                 askBus(*bus, "StartServiceByName", g_variant_new("(su)", storeName, 0U)));
}

const SecretSchema& schema() {
  static const SecretSchema schema{"com.zephyx.app",
                                   SECRET_SCHEMA_NONE,
                                   {{serviceAttribute, SECRET_SCHEMA_ATTRIBUTE_STRING}},
                                   0,
                                   nullptr,
                                   nullptr,
                                   nullptr,
                                   nullptr,
                                   nullptr,
                                   nullptr,
                                   nullptr};
  return schema;
}

Attributes attributesOf(const std::string& service) {
  return Attributes(secret_attributes_build(&schema(), serviceAttribute, service.c_str(), nullptr));
}

/// What `question` answers, and whether it could be asked: else it sets the error that its argument
/// points to. The library goes on asking a service that has been replaced; then it is asked anew.
template <typename Question>
auto ask(Question question, bool isLast = false) {
  GError* error = nullptr;
  auto answer = question(&error);
  const Error owned(error);
  if (!owned || isLast) return std::pair(std::move(answer), owned == nullptr);
  secret_service_disconnect();
  return ask(std::move(question), true);
}

}  // namespace

bool LinuxKeychain::isAvailable() {
  secret_service_disconnect();
  const auto bus = sessionBus();
  return bus && (isRunning(*bus) || canBeStarted(*bus));
}

std::optional<Bytes> LinuxKeychain::password(const std::string& service) {
  if (service == toolCredentials::service) return toolCredentials::read();
  if (!isReachable()) return std::nullopt;
  const auto attributes = attributesOf(service);
  const auto value = ask([&](GError** error) {
                       return SecretValuePointer(secret_password_lookupv_binary_sync(
                           &schema(), attributes.get(), nullptr, error));
                     }).first;
  if (!value) return std::nullopt;
  gsize length = 0;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(secret_value_get(value.get(), &length));
  return Bytes(bytes, bytes + length);
}

bool LinuxKeychain::setPassword(const std::string& service, BytesView secret) {
  if (service == toolCredentials::service || !isReachable()) return false;
  const auto attributes = attributesOf(service);
  const SecretValuePointer value(secret_value_new(reinterpret_cast<const gchar*>(secret.data()),
                                                  static_cast<gssize>(secret.size()), contentType));
  // The service replaces what has the same attributes.
  return ask([&](GError** error) {
           return secret_password_storev_binary_sync(
               &schema(), attributes.get(), SECRET_COLLECTION_DEFAULT,
               ("Zephyx: " + service).c_str(), value.get(), nullptr, error);
         }).first != FALSE;
}

bool LinuxKeychain::deletePassword(const std::string& service) {
  if (service == toolCredentials::service || !isReachable()) return false;
  const auto attributes = attributesOf(service);
  return ask([&](GError** error) {
           // False: none was there.
           return secret_password_clearv_sync(&schema(), attributes.get(), nullptr, error);
         })
      .second;
}

}  // namespace zephyx
