#pragma once

#include <zlib.h>

#include <random>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

inline Bytes bigEndian32(std::uint32_t value) {
  return {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
          static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
}

inline Bytes zlibPacked(const Bytes& raw) {
  Bytes packed(compressBound(raw.size()));
  auto size = static_cast<uLongf>(packed.size());
  compress2(packed.data(), &size, raw.data(), raw.size(), 1);
  packed.resize(size);
  return packed;
}

/// A PNG file put together by hand, chunk by chunk, so that it can be of any kind, and wrong.
struct PngFile {
  std::uint32_t wide = 0;
  std::uint32_t high = 0;
  std::uint8_t depth = 8;
  std::uint8_t colorType = 2;
  bool interlaced = false;

  Bytes file = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};

  PngFile& chunk(const std::string& name, const Bytes& payload) {
    Bytes checked(name.begin(), name.end());
    checked.insert(checked.end(), payload.begin(), payload.end());
    append(bigEndian32(static_cast<std::uint32_t>(payload.size())));
    append(checked);
    append(bigEndian32(
        static_cast<std::uint32_t>(crc32(0, checked.data(), static_cast<uInt>(checked.size())))));
    return *this;
  }
  PngFile& header() {
    Bytes payload = bigEndian32(wide);
    const auto tail = bigEndian32(high);
    payload.insert(payload.end(), tail.begin(), tail.end());
    payload.insert(payload.end(), {depth, colorType, 0, 0, interlaced});
    return chunk("IHDR", payload);
  }
  /// Picture data in chunks of uneven length.
  PngFile& data(const Bytes& packed) {
    for (std::size_t at = 0, length = 1; at < packed.size();
         at += length, length = length * 3 + 1) {
      const auto end = std::min(packed.size(), at + length);
      chunk("IDAT", Bytes(packed.begin() + static_cast<std::ptrdiff_t>(at),
                          packed.begin() + static_cast<std::ptrdiff_t>(end)));
    }
    return *this;
  }
  Bytes end() { return chunk("IEND", {}).file; }

  /// Random rows, each with a random one of the five filters.
  Bytes randomRows(unsigned seed) const {
    static constexpr int channels[] = {1, 0, 3, 1, 2, 0, 4};
    std::mt19937 random(seed);
    Bytes raw;
    const auto rows = [&](std::uint32_t columns, std::uint32_t count) {
      if (columns == 0) return;
      const auto bytes = (columns * depth * channels[colorType] + 7) / 8;
      for (std::uint32_t row = 0; row < count; ++row) {
        raw.push_back(static_cast<std::uint8_t>(random() % 5));
        for (std::uint32_t i = 0; i < bytes; ++i) {
          raw.push_back(static_cast<std::uint8_t>(random() % 5 ? 0 : random()));
        }
      }
    };
    if (!interlaced) {
      rows(wide, high);
      return raw;
    }
    static constexpr struct {
      std::uint32_t x, y, stepX, stepY;
    } passes[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                  {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    for (const auto& pass : passes) {
      rows((wide - pass.x + pass.stepX - 1) / pass.stepX,
           (high - pass.y + pass.stepY - 1) / pass.stepY);
    }
    return raw;
  }

 private:
  void append(const Bytes& bytes) { file.insert(file.end(), bytes.begin(), bytes.end()); }
};

}  // namespace zephyx
