#pragma once

#include <cstddef>
#include <cstdint>

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
  /// `value` must be null; what it holds after a failure has no meaning.
  bool readValue(Value& value);
  bool atEnd() const { return position_ == end_; }

 private:
  const std::uint8_t* begin_;
  const std::uint8_t* position_;
  const std::uint8_t* end_;
};

}  // namespace zephyx
