#pragma once

#include <map>
#include <mutex>
#include <thread>

#include "Platform/Keychain.h"

namespace zephyx {

/// Secrets in memory. Notes when a call came from the thread that made it.
class TestKeychain : public Keychain {
 public:
  bool isAvailable() override {
    const std::lock_guard lock(mutex_);
    note();
    return available;
  }
  std::optional<Bytes> password(const std::string& service) override {
    const std::lock_guard lock(mutex_);
    note();
    const auto found = secrets.find(service);
    return locked || found == secrets.end() ? std::nullopt : std::optional(found->second);
  }
  bool setPassword(const std::string& service, BytesView secret) override {
    const std::lock_guard lock(mutex_);
    note();
    if (!locked) secrets[service] = Bytes(secret.begin(), secret.end());
    return !locked;
  }
  bool deletePassword(const std::string& service) override {
    const std::lock_guard lock(mutex_);
    note();
    if (!locked) secrets.erase(service);
    return !locked;
  }

  // To be touched while no call is under way.
  std::map<std::string, Bytes> secrets;
  bool available = true;
  bool locked = false;
  bool usedOnMainThread = false;

 private:
  void note() { usedOnMainThread |= std::this_thread::get_id() == mainThread_; }

  std::mutex mutex_;
  std::thread::id mainThread_ = std::this_thread::get_id();
};

}  // namespace zephyx
