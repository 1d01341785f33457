#include "Platform/Linux/Pictures/PngPixelStream.h"

#include <algorithm>
#include <cstring>

#include "Platform/Linux/Pictures/PngBytes.h"
#include "Platform/Linux/Pictures/PngChecksum.h"

namespace zephyx {

namespace {
constexpr std::size_t storedMaximum = 65535;  // bytes in a stored block
constexpr std::size_t storedHeader = 5;
constexpr std::size_t storedBlocks = 4;  // in one IDAT chunk
constexpr std::size_t streamHeader = 2;
constexpr std::size_t streamTrailer = 4;
constexpr std::uint64_t threadedSize = 1 << 20;
}  // namespace

PngPixelStream::PngPixelStream(const PngChunks& chunks, std::uint64_t size)
    : chunks_(chunks), remaining_(size) {
  if (size >= threadedSize) thread_ = std::thread([this] { run(); });
}

PngPixelStream::~PngPixelStream() {
  {
    const std::lock_guard lock(mutex_);
    cancelled_ = true;
  }
  changed_.notify_all();
  if (thread_.joinable()) thread_.join();
}

bool PngPixelStream::read(std::span<std::uint8_t> to) {
  while (!to.empty()) {
    if (position_ == current_.size() && !nextBlock()) return false;
    const auto count = std::min(to.size(), current_.size() - position_);
    std::memcpy(to.data(), current_.data() + position_, count);
    position_ += count;
    to = to.subspan(count);
  }
  return true;
}

bool PngPixelStream::finish() {
  if (thread_.joinable()) {
    // The reader may leave the stream's trailer unread.
    while (nextBlock()) {
    }
    thread_.join();
  }
  return remaining_ == 0 && !damaged_;
}

bool PngPixelStream::nextBlock() {
  position_ = 0;
  if (!thread_.joinable()) {
    if (!fill(current_)) current_.clear();
    return !current_.empty();
  }
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return filled_ > emptied_ || done_; });
  if (filled_ == emptied_) {
    current_.clear();
    return false;
  }
  std::swap(current_, ring_[emptied_ % ring_.size()]);
  ++emptied_;
  changed_.notify_all();
  return true;
}

void PngPixelStream::run() {
  for (bool more = true; more;) {
    std::size_t slot = 0;
    {
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [this] { return filled_ - emptied_ < ring_.size() || cancelled_; });
      if (cancelled_) return;
      slot = filled_ % ring_.size();
    }
    more = fill(ring_[slot]);
    {
      const std::lock_guard lock(mutex_);
      if (more) ++filled_;
      done_ = !more;
    }
    changed_.notify_all();
  }
}

bool PngPixelStream::fill(Block& block) {
  if (remaining_ == 0 || damaged_) return false;
  block.resize(PngChunks::overhead + streamHeader + streamTrailer +
               storedBlocks * (storedHeader + storedMaximum));
  std::size_t at = 8;
  if (!started_) {
    block[at++] = 0x78;
    block[at++] = 0x01;
    started_ = true;
  }
  for (std::size_t i = 0; i < storedBlocks && remaining_ > 0; ++i) {
    const auto wanted = std::min<std::uint64_t>(storedMaximum, remaining_);
    const auto count = unpack(std::span(block).subspan(at + storedHeader, wanted));
    if (count < wanted) {
      damaged_ = true;
      return false;
    }
    remaining_ -= count;
    block[at] = remaining_ == 0;  // the last one
    block[at + 1] = static_cast<std::uint8_t>(count);
    block[at + 2] = static_cast<std::uint8_t>(count >> 8);
    block[at + 3] = static_cast<std::uint8_t>(~block[at + 1]);
    block[at + 4] = static_cast<std::uint8_t>(~block[at + 2]);
    at += storedHeader + count;
  }
  if (remaining_ == 0) {
    std::memset(&block[at], 0, streamTrailer);
    at += streamTrailer;
    damaged_ = !checkEnd();
  }
  writeBigEndian(static_cast<std::uint32_t>(at - 8), &block[0]);
  writeBigEndian(pngName("IDAT"), &block[4]);
  std::memset(&block[at], 0, 4);
  block.resize(at + 4);
  return true;
}

std::size_t PngPixelStream::unpack(std::span<std::uint8_t> to) {
  std::size_t written = 0;
  while (written < to.size()) {
    const auto count = decoder_.decode(to.subspan(written));
    written += count;
    if (decoder_.hasEnded() || decoder_.hasFailed()) break;
    if (count == 0 && !nextInput()) break;
  }
  return written;
}

bool PngPixelStream::nextInput() {
  if (nextChunk_ == chunks_.data.size()) return false;
  const auto chunk = chunks_.data[nextChunk_++];
  const auto checked = chunk.subspan(4, chunk.size() - 8);
  if (pngChecksum(checked) != readBigEndian(&chunk[chunk.size() - 4])) {
    damaged_ = true;
    return false;
  }
  decoder_.setInput(PngChunks::payload(chunk));
  return true;
}

bool PngPixelStream::checkEnd() {
  // Surplus data behind the last pixel is harmless and is left packed.
  std::array<std::uint8_t, 1> surplus;
  if (unpack(surplus) > 0) return true;
  return decoder_.hasEnded() && !damaged_;
}

}  // namespace zephyx
