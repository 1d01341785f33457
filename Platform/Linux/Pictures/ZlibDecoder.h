#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// Unpacks one zlib stream piece by piece and checks its checksum at the end. Used by one thread.
class ZlibDecoder {
 public:
  ZlibDecoder();
  ~ZlibDecoder();
  ZlibDecoder(const ZlibDecoder&) = delete;
  ZlibDecoder& operator=(const ZlibDecoder&) = delete;

  /// The next piece of the stream, which must stay in place until it is used up.
  void setInput(BytesView input);
  /// Unpacks into `output` until it is full, the input is used up or the stream ends or breaks;
  /// returns the number of bytes written.
  std::size_t decode(std::span<std::uint8_t> output);
  bool hasEnded() const;  ///< and its checksum was right
  bool hasFailed() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace zephyx
