#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Channel/Value.h"
#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// Reads the parts of one message. Each read gives false for malformed bytes; nothing more can be
/// read then. The bytes must outlive the reader.
class MessageReader {
 public:
  explicit MessageReader(BytesView bytes)
      : begin_(bytes.data()), position_(begin_), end_(begin_ + bytes.size()) {}

  bool readByte(std::uint8_t& byte);
  /// `text` lies in the bytes. False for a value of another kind, too.
  bool readText(std::string_view& text);
  /// `value` must be null; what it holds after a failure has no meaning.
  bool readValue(Value& value);
  bool atEnd() const { return position_ == end_; }

 private:
  const std::uint8_t* begin_;
  const std::uint8_t* position_;
  const std::uint8_t* end_;
};

}  // namespace zephyx
