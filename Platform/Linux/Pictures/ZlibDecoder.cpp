#include "Platform/Linux/Pictures/ZlibDecoder.h"

#if ZEPHYX_ISAL
#include <isa-l/igzip_lib.h>
#else
#include <zlib.h>
#endif

namespace zephyx {

#if ZEPHYX_ISAL

struct ZlibDecoder::State {
  inflate_state stream;
  bool ended = false;
  bool failed = false;
};

ZlibDecoder::ZlibDecoder() : state_(new State) {
  isal_inflate_init(&state_->stream);
  state_->stream.crc_flag = ISAL_ZLIB;
}

ZlibDecoder::~ZlibDecoder() = default;

void ZlibDecoder::setInput(BytesView input) {
  // The library's interface is not const-correct; it only reads.
  state_->stream.next_in = const_cast<std::uint8_t*>(input.data());
  state_->stream.avail_in = static_cast<std::uint32_t>(input.size());
}

std::size_t ZlibDecoder::decode(std::span<std::uint8_t> output) {
  if (state_->ended || state_->failed) return 0;
  auto& stream = state_->stream;
  stream.next_out = output.data();
  stream.avail_out = static_cast<std::uint32_t>(output.size());
  state_->failed = isal_inflate(&stream) != ISAL_DECOMP_OK;
  state_->ended = !state_->failed && stream.block_state == ISAL_BLOCK_FINISH;
  return output.size() - stream.avail_out;
}

#else

struct ZlibDecoder::State {
  z_stream stream{};
  bool ended = false;
  bool failed = false;
};

ZlibDecoder::ZlibDecoder() : state_(new State) {
  state_->failed = inflateInit(&state_->stream) != Z_OK;
}

ZlibDecoder::~ZlibDecoder() {
  inflateEnd(&state_->stream);
}

void ZlibDecoder::setInput(BytesView input) {
  // The library's interface is not const-correct; it only reads.
  state_->stream.next_in = const_cast<std::uint8_t*>(input.data());
  state_->stream.avail_in = static_cast<uInt>(input.size());
}

std::size_t ZlibDecoder::decode(std::span<std::uint8_t> output) {
  if (state_->ended || state_->failed) return 0;
  auto& stream = state_->stream;
  stream.next_out = output.data();
  stream.avail_out = static_cast<uInt>(output.size());
  const int result = inflate(&stream, Z_NO_FLUSH);
  state_->ended = result == Z_STREAM_END;
  // A lack of room in either buffer is not an error.
  state_->failed = !state_->ended && result != Z_OK && result != Z_BUF_ERROR;
  return output.size() - stream.avail_out;
}

#endif

bool ZlibDecoder::hasEnded() const {
  return state_->ended;
}
bool ZlibDecoder::hasFailed() const {
  return state_->failed;
}

}  // namespace zephyx
