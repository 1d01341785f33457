#include "Platform/Linux/Pictures/ZlibEncoder.h"

#if ZEPHYX_ISAL
#include <isa-l/igzip_lib.h>
#else
#include <zlib.h>
#endif

namespace zephyx {

namespace {
constexpr std::size_t step = 64 * 1024;
}

#if ZEPHYX_ISAL

struct ZlibEncoder::State {
  isal_zstream stream;
  Bytes level = Bytes(ISAL_DEF_LVL1_DEFAULT);
};

ZlibEncoder::ZlibEncoder() : state_(new State) {
  auto& stream = state_->stream;
  isal_deflate_init(&stream);
  stream.level = 1;
  stream.level_buf = state_->level.data();
  stream.level_buf_size = static_cast<std::uint32_t>(state_->level.size());
  stream.gzip_flag = IGZIP_ZLIB;
}

ZlibEncoder::~ZlibEncoder() = default;

bool ZlibEncoder::encode(BytesView input, bool last, Bytes& output) {
  auto& stream = state_->stream;
  // The library's interface is not const-correct; it only reads.
  stream.next_in = const_cast<std::uint8_t*>(input.data());
  stream.avail_in = static_cast<std::uint32_t>(input.size());
  stream.end_of_stream = last;
  do {
    const auto used = output.size();
    output.resize(used + step);
    stream.next_out = output.data() + used;
    stream.avail_out = step;
    const int result = isal_deflate(&stream);
    output.resize(used + step - stream.avail_out);
    if (result != COMP_OK) return false;
  } while (stream.avail_out == 0);
  return stream.avail_in == 0;
}

#else

struct ZlibEncoder::State {
  z_stream stream{};
  bool started = false;
};

ZlibEncoder::ZlibEncoder() : state_(new State) {
  state_->started = deflateInit(&state_->stream, 1) == Z_OK;
}

ZlibEncoder::~ZlibEncoder() {
  deflateEnd(&state_->stream);
}

bool ZlibEncoder::encode(BytesView input, bool last, Bytes& output) {
  if (!state_->started) return false;
  auto& stream = state_->stream;
  // The library's interface is not const-correct; it only reads.
  stream.next_in = const_cast<std::uint8_t*>(input.data());
  stream.avail_in = static_cast<uInt>(input.size());
  do {
    const auto used = output.size();
    output.resize(used + step);
    stream.next_out = output.data() + used;
    stream.avail_out = step;
    const int result = deflate(&stream, last ? Z_FINISH : Z_NO_FLUSH);
    output.resize(used + step - stream.avail_out);
    if (result == Z_STREAM_ERROR) return false;
  } while (stream.avail_out == 0);
  return stream.avail_in == 0;
}

#endif

}  // namespace zephyx
