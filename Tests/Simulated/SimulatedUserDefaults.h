#pragma once

#include <map>
#include <memory>
#include <variant>

#include "Platform/UserDefaults.h"

namespace zephyx {

/// Settings in memory. Objects on the same store are successive starts of the program.
class SimulatedUserDefaults final : public UserDefaults {
 public:
  using Store = std::map<std::string, std::variant<Bytes, std::string, bool, double>>;

  explicit SimulatedUserDefaults(std::shared_ptr<Store> store) : store_(std::move(store)) {}

  std::optional<Bytes> data(const std::string& key) const override { return value<Bytes>(key); }
  std::optional<std::string> string(const std::string& key) const override {
    return value<std::string>(key);
  }
  std::optional<bool> boolean(const std::string& key) const override { return value<bool>(key); }
  std::optional<double> number(const std::string& key) const override { return value<double>(key); }
  void setData(const std::string& key, BytesView value) override {
    (*store_)[key] = Bytes(value.begin(), value.end());
  }
  void setString(const std::string& key, const std::string& value) override {
    (*store_)[key] = value;
  }
  void setBoolean(const std::string& key, bool value) override { (*store_)[key] = value; }
  void setNumber(const std::string& key, double value) override { (*store_)[key] = value; }
  void removeObject(const std::string& key) override { store_->erase(key); }

  const std::shared_ptr<Store>& store() const { return store_; }

 private:
  template <typename T>
  std::optional<T> value(const std::string& key) const {
    const auto found = store_->find(key);
    if (found == store_->end()) return std::nullopt;
    const auto* value = std::get_if<T>(&found->second);
    return value ? std::optional<T>(*value) : std::nullopt;
  }

  std::shared_ptr<Store> store_;
};

}  // namespace zephyx
