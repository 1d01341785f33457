#pragma once

#include <memory>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// Packs bytes into one zlib stream, fast rather than small. Used by one thread.
class ZlibEncoder {
 public:
  ZlibEncoder();
  ~ZlibEncoder();
  ZlibEncoder(const ZlibEncoder&) = delete;
  ZlibEncoder& operator=(const ZlibEncoder&) = delete;

  /// Takes all of `input` in and appends what is packed by now to `output`. `last` ends the stream.
  /// False when that failed.
  bool encode(BytesView input, bool last, Bytes& output);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace zephyx
