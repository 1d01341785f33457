#include "Channel/MessageWriter.h"

#include <bit>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <type_traits>

#include "Channel/EncodedType.h"

namespace zephyx {

static_assert(std::endian::native == std::endian::little,
              "numbers cross the channel in the byte order of the host");

namespace {

// Each function takes the position at which it writes and gives the one after, which keeps it in a
// register.
template <typename Position>
class Encoder {
 public:
  explicit Encoder(Position begin) : begin_(begin) {}

  Position writeValue(Position at, const Value& value) const {
    // Most of what is sent is text and small numbers, which this spares a call.
    const auto& storage = value.storage();
    if (const auto* text = std::get_if<std::string>(&storage)) return writeString(at, *text);
    if (const auto* number = std::get_if<std::int32_t>(&storage)) return writeContent(at, *number);
    return writeOther(at, value);
  }

  static Position writeString(Position at, std::string_view text) {
    return writeText(at, EncodedType::string, text);
  }

  static Position writeByte(Position at, std::uint8_t byte) {
    if constexpr (std::is_pointer_v<Position>) *at = byte;
    return at + 1;
  }

 private:
  [[gnu::noinline]] Position writeOther(Position at, const Value& value) const {
    return std::visit([&](const auto& content) { return this->writeContent(at, content); },
                      value.storage());
  }

  Position writeContent(Position at, std::monostate) const {
    return writeType(at, EncodedType::null);
  }
  Position writeContent(Position at, bool value) const {
    return writeType(at, value ? EncodedType::yes : EncodedType::no);
  }
  Position writeContent(Position at, std::int32_t value) const {
    return writeRaw(writeType(at, EncodedType::int32), &value, sizeof value);
  }
  Position writeContent(Position at, std::int64_t value) const {
    return writeRaw(writeType(at, EncodedType::int64), &value, sizeof value);
  }
  Position writeContent(Position at, double value) const {
    at = align(writeType(at, EncodedType::float64), sizeof value);
    return writeRaw(at, &value, sizeof value);
  }
  Position writeContent(Position at, const BigInteger& value) const {
    return writeText(at, EncodedType::bigInteger, value.hexadecimal);
  }

  Position writeContent(Position at, std::string_view value) const {
    return writeString(at, value);
  }

  Position writeContent(Position at, const NumberList& list) const {
    return std::visit([&](const auto& numbers) { return this->writeNumbers(at, numbers); }, list);
  }

  Position writeContent(Position at, const List& list) const {
    at = writeSize(writeType(at, EncodedType::list), list.size());
    for (const Value& value : list) at = writeValue(at, value);
    return at;
  }

  Position writeContent(Position at, const Map& map) const {
    at = writeSize(writeType(at, EncodedType::map), map.size());
    for (const auto& [key, value] : map.entries()) at = writeValue(writeValue(at, key), value);
    return at;
  }

  // Dart aligns in front of an empty list as well.
  template <typename Number>
  Position writeNumbers(Position at, const std::vector<Number>& numbers) const {
    at = align(writeSize(writeType(at, typeOfList(numbers)), numbers.size()), sizeof(Number));
    return writeRaw(at, numbers.data(), numbers.size() * sizeof(Number));
  }

  static EncodedType typeOfList(const std::vector<std::uint8_t>&) { return EncodedType::uint8List; }
  static EncodedType typeOfList(const std::vector<std::int32_t>&) { return EncodedType::int32List; }
  static EncodedType typeOfList(const std::vector<std::int64_t>&) { return EncodedType::int64List; }
  static EncodedType typeOfList(const std::vector<float>&) { return EncodedType::float32List; }
  static EncodedType typeOfList(const std::vector<double>&) { return EncodedType::float64List; }

  static Position writeText(Position at, EncodedType type, std::string_view text) {
    at = writeSize(writeType(at, type), text.size());
    return writeRaw(at, text.data(), text.size());
  }

  static Position writeType(Position at, EncodedType type) {
    return writeByte(at, static_cast<std::uint8_t>(type));
  }

  static Position writeSize(Position at, std::size_t size) {
    if (size < size16Follows) return writeByte(at, static_cast<std::uint8_t>(size));
    if (size <= std::numeric_limits<std::uint16_t>::max()) {
      return writeRaw(writeByte(at, size16Follows), &size, sizeof(std::uint16_t));
    }
    if (size <= std::numeric_limits<std::uint32_t>::max()) {
      return writeRaw(writeByte(at, size32Follows), &size, sizeof(std::uint32_t));
    }
    throw std::length_error("a channel value has more than 2^32 - 1 characters or elements");
  }

  static Position writeRaw(Position at, const void* data, std::size_t size) {
    if constexpr (std::is_pointer_v<Position>) {
      copy(at, static_cast<const std::uint8_t*>(data), size);
    }
    return at + size;
  }

  static void copy(std::uint8_t* to, const std::uint8_t* from, std::size_t size) {
    // Short pieces without the call of memcpy: two words that overlap.
    if (size > 16) {
      std::memcpy(to, from, size);
    } else if (size >= 8) {
      copyEnds<std::uint64_t>(to, from, size);
    } else if (size >= 4) {
      copyEnds<std::uint32_t>(to, from, size);
    } else {
      for (std::size_t i = 0; i < size; ++i) to[i] = from[i];
    }
  }

  template <typename Word>
  static void copyEnds(std::uint8_t* to, const std::uint8_t* from, std::size_t size) {
    Word first;
    Word last;
    std::memcpy(&first, from, sizeof(Word));
    std::memcpy(&last, from + size - sizeof(Word), sizeof(Word));
    std::memcpy(to, &first, sizeof(Word));
    std::memcpy(to + size - sizeof(Word), &last, sizeof(Word));
  }

  Position align(Position at, std::size_t alignment) const {
    const auto offset = static_cast<std::size_t>(at - begin_);
    return at + (alignment - offset % alignment) % alignment;
  }

  Position begin_;
};

}  // namespace

template <typename Position>
void MessageWriter<Position>::writeByte(std::uint8_t byte) {
  next_ = Encoder<Position>::writeByte(next_, byte);
}

template <typename Position>
void MessageWriter<Position>::writeString(std::string_view text) {
  next_ = Encoder<Position>::writeString(next_, text);
}

template <typename Position>
void MessageWriter<Position>::writeValue(const Value& value) {
  next_ = Encoder<Position>(begin_).writeValue(next_, value);
}

template class MessageWriter<std::size_t>;
template class MessageWriter<std::uint8_t*>;

}  // namespace zephyx
