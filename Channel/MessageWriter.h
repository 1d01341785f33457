#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Channel/Value.h"
#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// Writes the parts of one message, one after the other, from `begin` on. `Position` is
/// `std::uint8_t*`, into memory that is zeroed and large enough, or `std::size_t`, which only
/// measures.
template <typename Position>
class MessageWriter {
 public:
  explicit MessageWriter(Position begin) : begin_(begin), next_(begin) {}

  void writeByte(std::uint8_t byte);
  /// These throw std::length_error for more than 2^32 - 1 characters or elements, which the
  /// encoding cannot express.
  void writeString(std::string_view text);
  void writeValue(const Value& value);

  std::size_t size() const { return static_cast<std::size_t>(next_ - begin_); }

 private:
  Position begin_;
  Position next_;
};

extern template class MessageWriter<std::size_t>;
extern template class MessageWriter<std::uint8_t*>;

/// `write` is called with each kind of writer and writes the same parts to both: once to measure
/// them, so that the message takes a single allocation, and once for good.
template <typename Write>
Bytes writeMessage(const Write& write) {
  MessageWriter<std::size_t> measure(0);
  write(measure);
  Bytes bytes(measure.size());
  MessageWriter<std::uint8_t*> writer(bytes.data());
  write(writer);
  return bytes;
}

}  // namespace zephyx
