#include "Platform/Linux/Keychain/LinuxKeychain.h"

#include <libsecret/secret.h>

#include <memory>

#include "Platform/Linux/Keychain/ToolCredentials.h"

namespace zephyx {
namespace {

constexpr const char* serviceAttribute = "service";
constexpr const char* contentType = "application/octet-stream";

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

}  // namespace

bool LinuxKeychain::isAvailable() {
  GError* error = nullptr;
  const std::unique_ptr<SecretService, Releaser<g_object_unref>> service(
      secret_service_get_sync(SECRET_SERVICE_NONE, nullptr, &error));
  const Error owned(error);
  return service != nullptr;
}

std::optional<Bytes> LinuxKeychain::password(const std::string& service) {
  if (service == toolCredentials::service) return toolCredentials::read();
  GError* error = nullptr;
  const auto attributes = attributesOf(service);
  const SecretValuePointer value(
      secret_password_lookupv_binary_sync(&schema(), attributes.get(), nullptr, &error));
  const Error owned(error);
  if (!value) return std::nullopt;
  gsize length = 0;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(secret_value_get(value.get(), &length));
  return Bytes(bytes, bytes + length);
}

bool LinuxKeychain::setPassword(const std::string& service, BytesView secret) {
  if (service == toolCredentials::service) return false;
  GError* error = nullptr;
  const auto attributes = attributesOf(service);
  const SecretValuePointer value(secret_value_new(reinterpret_cast<const gchar*>(secret.data()),
                                                  static_cast<gssize>(secret.size()), contentType));
  // The service replaces what has the same attributes.
  const bool isStored = secret_password_storev_binary_sync(
      &schema(), attributes.get(), SECRET_COLLECTION_DEFAULT, ("Zephyx: " + service).c_str(),
      value.get(), nullptr, &error);
  const Error owned(error);
  return isStored;
}

bool LinuxKeychain::deletePassword(const std::string& service) {
  if (service == toolCredentials::service) return false;
  GError* error = nullptr;
  const auto attributes = attributesOf(service);
  secret_password_clearv_sync(&schema(), attributes.get(), nullptr,
                              &error);  // false: none was there
  const Error owned(error);
  return !owned;
}

}  // namespace zephyx
