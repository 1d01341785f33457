#include "Channel/Value.h"

namespace zephyx {

Map::Map(std::initializer_list<Entry> entries) : entries_(entries) {}

const Value* Map::find(std::string_view key) const {
  for (const auto& [entryKey, value] : entries_) {
    const std::string* text = entryKey.asString();
    if (text && *text == key) return &value;
  }
  return nullptr;
}

Value* Map::find(std::string_view key) {
  return const_cast<Value*>(std::as_const(*this).find(key));
}

void Map::set(Value key, Value value) {
  for (auto& entry : entries_) {
    if (entry.first == key) {
      entry.second = std::move(value);
      return;
    }
  }
  append(std::move(key), std::move(value));
}

bool Map::operator==(const Map& other) const {
  if (size() != other.size()) return false;
  // Each pair of entries is compared once at most: with deeply nested maps, comparing twice on each
  // level would double the work per level.
  std::vector<bool> taken(size());
  std::size_t firstFree = 0;
  for (const auto& [key, value] : entries_) {
    std::size_t match = firstFree;
    while (match < size() && (taken[match] || !(other.entries_[match].first == key))) ++match;
    if (match == size() || !(other.entries_[match].second == value)) return false;
    taken[match] = true;
    while (firstFree < size() && taken[firstFree]) ++firstFree;
  }
  return true;
}

void Value::destroyOther() noexcept {
  std::destroy_at(&storage_);
}

std::optional<bool> Value::asBool() const {
  const bool* value = std::get_if<bool>(&storage_);
  return value ? std::optional(*value) : std::nullopt;
}

std::optional<std::int64_t> Value::asInteger() const {
  if (const auto* value = std::get_if<std::int32_t>(&storage_)) return *value;
  if (const auto* value = std::get_if<std::int64_t>(&storage_)) return *value;
  return std::nullopt;
}

std::optional<double> Value::asNumber() const {
  if (const auto* value = std::get_if<double>(&storage_)) return *value;
  if (const auto integer = asInteger()) return static_cast<double>(*integer);
  return std::nullopt;
}

bool Value::operator==(const Value& other) const {
  if (storage_.index() == other.storage_.index()) return storage_ == other.storage_;
  const auto integer = asInteger();
  return integer && integer == other.asInteger();
}

}  // namespace zephyx
