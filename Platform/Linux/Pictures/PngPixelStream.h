#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>
#include <vector>

#include "Platform/Linux/Pictures/PngChunks.h"
#include "Platform/Linux/Pictures/ZlibDecoder.h"

namespace zephyx {

/// A PNG file's picture data, unpacked and written again as IDAT chunks of stored blocks, which a
/// PNG library reads at the speed of copying. Unpacking a large picture runs ahead on a thread of
/// its own. The new chunks carry no checksums: the file's own are checked here.
class PngPixelStream {
 public:
  /// `chunks` outlives this object. `size` is what the unpacked data should amount to; nothing is
  /// unpacked beyond it.
  PngPixelStream(const PngChunks& chunks, std::uint64_t size);
  /// Drops what is still to be unpacked.
  ~PngPixelStream();
  PngPixelStream(const PngPixelStream&) = delete;
  PngPixelStream& operator=(const PngPixelStream&) = delete;

  /// The next bytes; false when there are not as many, or the data are damaged.
  bool read(std::span<std::uint8_t> to);
  /// To be asked when all pixels have been read: true when the data were whole and undamaged.
  bool finish();

 private:
  using Block = std::vector<std::uint8_t>;  ///< one IDAT chunk

  bool fill(Block& block);
  std::size_t unpack(std::span<std::uint8_t> to);
  bool nextInput();
  bool checkEnd();
  void run();
  bool nextBlock();

  const PngChunks& chunks_;
  ZlibDecoder decoder_;
  std::size_t nextChunk_ = 0;
  std::uint64_t remaining_;
  bool started_ = false;
  bool damaged_ = false;

  Block current_;  ///< read from `position_` on
  std::size_t position_ = 0;

  std::mutex mutex_;
  std::condition_variable changed_;
  std::array<Block, 4> ring_;
  std::size_t filled_ = 0;   ///< blocks written so far
  std::size_t emptied_ = 0;  ///< blocks taken so far
  bool done_ = false;        ///< the thread writes no more blocks
  bool cancelled_ = false;
  std::thread thread_;
};

}  // namespace zephyx
