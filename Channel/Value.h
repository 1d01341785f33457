#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace zephyx {

class Value;
/// A list of one list is List{Value(inner)}: compilers disagree on whether List{inner} copies it.
using List = std::vector<Value>;

/// Integers beyond 64 bits, as hexadecimal text.
struct BigInteger {
  std::string hexadecimal;
  bool operator==(const BigInteger&) const = default;
};

/// One of the lists of plain numbers, which cross the channel as one block.
using NumberList = std::variant<std::vector<std::uint8_t>, std::vector<std::int32_t>,
                                std::vector<std::int64_t>, std::vector<float>, std::vector<double>>;

/// A map with keys of any kind, in the order of insertion. Messages hold a dozen keys at most, so
/// look-up walks the entries. Two maps are equal when they hold the same pairs in any order. A
/// decoded map keeps a repeated key as it came; looking it up finds its first value.
class Map {
 public:
  using Entry = std::pair<Value, Value>;

  Map() = default;
  Map(std::initializer_list<Entry> entries);

  /// Null when there is no such key.
  const Value* find(std::string_view key) const;
  Value* find(std::string_view key);
  /// Replaces the value of an equal key.
  void set(Value key, Value value);
  /// Appends without looking for an equal key.
  void append(Value key, Value value);
  /// Appends so many pairs of nulls, to be filled in place.
  std::span<Entry> append(std::size_t count);
  void reserve(std::size_t count);

  std::size_t size() const;
  bool empty() const;
  const std::vector<Entry>& entries() const { return entries_; }

  bool operator==(const Map& other) const;

 private:
  std::vector<Entry> entries_;
};

/// What a channel message may carry. A 32-bit and a 64-bit integer of the same value are equal:
/// Dart sends whichever is shorter.
class Value {
 public:
  // Eleven alternatives at most: beyond that libstdc++ makes a call through a table of each visit.
  using Storage = std::variant<std::monostate, bool, std::int32_t, std::int64_t, double,
                               std::string, BigInteger, NumberList, List, Map>;

  Value() noexcept : storage_(std::monostate()) {}
  Value(const Value& other) : storage_(other.storage_) {}
  Value(Value&& other) noexcept : storage_(std::move(other.storage_)) {}
  Value& operator=(const Value& other) {
    storage_ = other.storage_;
    return *this;
  }
  Value& operator=(Value&& other) noexcept {
    storage_ = std::move(other.storage_);
    return *this;
  }
  ~Value() {
    if (auto* text = std::get_if<std::string>(&storage_)) {
      std::destroy_at(text);
    } else if (storage_.index() > lastPlain) {
      destroyOther();
    }
  }
  Value(bool value) : storage_(value) {}
  Value(std::int32_t value) : storage_(value) {}
  Value(std::int64_t value) : storage_(value) {}
  Value(double value) : storage_(value) {}
  Value(const char* value) : storage_(std::string(value)) {}
  Value(std::string_view value) : storage_(std::string(value)) {}
  Value(std::string value) : storage_(std::move(value)) {}
  Value(BigInteger value) : storage_(std::move(value)) {}
  Value(NumberList value) : storage_(std::move(value)) {}
  template <typename Number>
  Value(std::vector<Number> value) : storage_(NumberList(std::move(value))) {}
  Value(List value) : storage_(std::move(value)) {}
  Value(Map value) : storage_(std::move(value)) {}
  template <typename Kind, typename... Arguments>
  explicit Value(std::in_place_type_t<Kind> kind, Arguments&&... arguments)
      : storage_(kind, std::forward<Arguments>(arguments)...) {}
  template <typename T>
  Value(T*) = delete;  // a pointer must not become a bool

  bool isNull() const { return std::holds_alternative<std::monostate>(storage_); }
  /// Each is null, or nothing, when the value is of another kind.
  const std::string* asString() const { return std::get_if<std::string>(&storage_); }
  const Map* asMap() const { return std::get_if<Map>(&storage_); }
  const List* asList() const { return std::get_if<List>(&storage_); }
  std::optional<bool> asBool() const;
  /// Either width.
  std::optional<std::int64_t> asInteger() const;
  /// A double or an integer of either width.
  std::optional<double> asNumber() const;

  const Storage& storage() const { return storage_; }
  Storage& storage() { return storage_; }

  bool operator==(const Value& other) const;

 private:
  void destroyOther() noexcept;

  // The last of the alternatives that need no destruction.
  static constexpr std::size_t lastPlain = 4;
  static_assert(std::is_same_v<std::variant_alternative_t<lastPlain, Storage>, double>);

  // In a union, which leaves its destruction to this class: most values are text or numbers, and a
  // variant destroys these no faster than any other kind.
  union {
    Storage storage_;
  };
};

// Entries are complete from here on.
inline void Map::append(Value key, Value value) {
  entries_.emplace_back(std::move(key), std::move(value));
}
inline std::span<Map::Entry> Map::append(std::size_t count) {
  const std::size_t before = entries_.size();
  entries_.resize(before + count);
  return std::span(entries_).subspan(before);
}
inline void Map::reserve(std::size_t count) {
  entries_.reserve(count);
}
inline std::size_t Map::size() const {
  return entries_.size();
}
inline bool Map::empty() const {
  return entries_.empty();
}

}  // namespace zephyx
