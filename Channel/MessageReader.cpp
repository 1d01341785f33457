#include "Channel/MessageReader.h"

#include <bit>
#include <cstring>
#include <memory>

#include "Channel/EncodedType.h"
#include "Channel/StandardMessageCodec.h"
#include "Channel/Utf8.h"

namespace zephyx {

static_assert(std::endian::native == std::endian::little,
              "numbers cross the channel in the byte order of the host");

namespace {

// A position in the message, or null once the bytes have turned out malformed. Positions and limits
// travel as arguments and results, which keeps them in registers.
using Position = const std::uint8_t*;

std::size_t between(Position at, Position limit) {
  return static_cast<std::size_t>(limit - at);
}

// `value` is null, so there is nothing to destroy first, which a variant would check at some cost.
template <typename Kind, typename... Arguments>
Kind& become(Value& value, Arguments&&... arguments) {
  Value* made =
      std::construct_at(&value, std::in_place_type<Kind>, std::forward<Arguments>(arguments)...);
  return *std::get_if<Kind>(&made->storage());
}

// Every `limit` is the end of the message, less the bytes that the unread elements of the open
// lists and maps need at least. So all the sizes taken together, not just each one, are bounded by
// the message.
class Decoder {
 public:
  explicit Decoder(Position begin) : begin_(begin) {}

  // `depth` is how many lists and maps may still open.
  Position readValue(Position at, Position limit, int depth, Value& value) const {
    if (at == limit) return nullptr;
    const auto type = static_cast<EncodedType>(*at++);
    // Most of what is sent is text and small numbers in maps, which this spares a call.
    if (type == EncodedType::string) return readText<std::string>(at, limit, value);
    if (type == EncodedType::int32) return readNumber<std::int32_t>(at, limit, value);
    if (type == EncodedType::map) return readMap(at, limit, depth, value);
    return readOther(type, at, limit, depth, value);
  }

  static Position readText(Position at, Position limit, std::string_view& text) {
    if (at == limit || static_cast<EncodedType>(*at) != EncodedType::string) return nullptr;
    return readCharacters(at + 1, limit, text);
  }

 private:
  static Position readCharacters(Position at, Position limit, std::string_view& text) {
    std::size_t size = 0;
    at = readSize(at, limit, size);
    if (!at || size > between(at, limit)) return nullptr;
    text = {reinterpret_cast<const char*>(at), size};
    return isValidUtf8(text) ? at + size : nullptr;
  }

  [[gnu::noinline]] Position readOther(EncodedType type, Position at, Position limit, int depth,
                                       Value& value) const {
    switch (type) {
      case EncodedType::null:
        return at;
      case EncodedType::yes:
        become<bool>(value, true);
        return at;
      case EncodedType::no:
        become<bool>(value, false);
        return at;
      case EncodedType::int32:
        return readNumber<std::int32_t>(at, limit, value);
      case EncodedType::int64:
        return readNumber<std::int64_t>(at, limit, value);
      case EncodedType::bigInteger:
        return readText<BigInteger>(at, limit, value);
      case EncodedType::float64:
        at = align(at, limit, sizeof(double));
        return at ? readNumber<double>(at, limit, value) : nullptr;
      case EncodedType::string:
        return readText<std::string>(at, limit, value);
      case EncodedType::uint8List:
        return readNumbers<std::uint8_t>(at, limit, value);
      case EncodedType::int32List:
        return readNumbers<std::int32_t>(at, limit, value);
      case EncodedType::int64List:
        return readNumbers<std::int64_t>(at, limit, value);
      case EncodedType::float32List:
        return readNumbers<float>(at, limit, value);
      case EncodedType::float64List:
        return readNumbers<double>(at, limit, value);
      case EncodedType::list:
        return readList(at, limit, depth, value);
      case EncodedType::map:
        return readMap(at, limit, depth, value);
    }
    return nullptr;
  }

  static Position readSize(Position at, Position limit, std::size_t& size) {
    if (at == limit) return nullptr;
    size = *at++;
    if (size < size16Follows) return at;
    return size == size16Follows ? readWideSize<std::uint16_t>(at, limit, size)
                                 : readWideSize<std::uint32_t>(at, limit, size);
  }

  template <typename Wide>
  static Position readWideSize(Position at, Position limit, std::size_t& size) {
    if (between(at, limit) < sizeof(Wide)) return nullptr;
    Wide wide;
    std::memcpy(&wide, at, sizeof wide);
    size = wide;
    return at + sizeof wide;
  }

  Position align(Position at, Position limit, std::size_t alignment) const {
    const std::size_t padding = (alignment - between(begin_, at) % alignment) % alignment;
    return padding > between(at, limit) ? nullptr : at + padding;
  }

  template <typename Number>
  static Position readNumber(Position at, Position limit, Value& value) {
    if (between(at, limit) < sizeof(Number)) return nullptr;
    Number number;
    std::memcpy(&number, at, sizeof number);
    become<Number>(value, number);
    return at + sizeof number;
  }

  template <typename Kind>
  static Position readText(Position at, Position limit, Value& value) {
    std::string_view text;
    at = readCharacters(at, limit, text);
    if (!at) return nullptr;
    if constexpr (std::is_same_v<Kind, std::string>) {
      become<std::string>(value, text);
    } else {
      become<Kind>(value, Kind{std::string(text)});
    }
    return at;
  }

  template <typename Number>
  [[gnu::noinline]] Position readNumbers(Position at, Position limit, Value& value) const {
    std::size_t count = 0;
    at = readSize(at, limit, count);
    if (at) at = align(at, limit, sizeof(Number));
    if (!at || count > between(at, limit) / sizeof(Number)) return nullptr;
    const std::size_t size = count * sizeof(Number);
    std::vector<Number> numbers(count);
    if (count > 0) std::memcpy(numbers.data(), at, size);
    become<NumberList>(value, std::move(numbers));
    return at + size;
  }

  [[gnu::noinline]] Position readList(Position at, Position limit, int depth, Value& value) const {
    std::size_t count = 0;
    at = readSize(at, limit, count);
    if (!at || depth == 0 || count > between(at, limit)) return nullptr;
    limit -= count;
    for (Value& element : become<List>(value, count)) {
      at = readValue(at, ++limit, depth - 1, element);
      if (!at) break;
    }
    return at;
  }

  [[gnu::noinline]] Position readMap(Position at, Position limit, int depth, Value& value) const {
    std::size_t count = 0;
    at = readSize(at, limit, count);
    if (!at || depth == 0 || count > between(at, limit) / 2) return nullptr;
    limit -= 2 * count;
    for (auto& [key, element] : become<Map>(value).append(count)) {
      at = readValue(at, ++limit, depth - 1, key);
      if (at) at = readValue(at, ++limit, depth - 1, element);
      if (!at) break;
    }
    return at;
  }

  Position begin_;
};

}  // namespace

bool MessageReader::readByte(std::uint8_t& byte) {
  if (atEnd()) return false;
  byte = *position_++;
  return true;
}

bool MessageReader::readText(std::string_view& text) {
  const Position after = Decoder::readText(position_, end_, text);
  if (after) position_ = after;
  return after != nullptr;
}

bool MessageReader::readValue(Value& value) {
  const Position after =
      Decoder(begin_).readValue(position_, end_, StandardMessageCodec::maximumDepth, value);
  if (after) position_ = after;
  return after != nullptr;
}

}  // namespace zephyx
