#include "Platform/Linux/Pictures/BoxScaler.h"

#include <algorithm>
#include <future>
#include <iterator>

namespace zephyx {

namespace {

// As many rows of bytes as a 16-bit sum holds.
constexpr int wholeRowsMaximum = 65535 / 255;

// Work on fewer source pixels than this is done before a second thread has started.
constexpr std::int64_t threadedPixels = 1 << 20;

// Inner loops of a fixed length become vector instructions at the usual optimisation level.
constexpr std::size_t lane = 32;

template <typename From, typename To, typename Step>
inline void inLanes(const From* __restrict from, To* __restrict to, std::size_t count, Step step) {
  std::size_t at = 0;
  for (; at + lane <= count; at += lane) {
    for (std::size_t i = 0; i < lane; ++i) step(from[at + i], to[at + i]);
  }
  for (; at < count; ++at) step(from[at], to[at]);
}

bool isOpaque(const std::uint8_t* row, std::size_t bytes) {
  std::uint8_t all[lane];
  std::fill(std::begin(all), std::end(all), std::uint8_t{255});
  std::size_t at = 0;
  for (; at + lane <= bytes; at += lane) {
    for (std::size_t i = 0; i < lane; ++i) all[i] &= row[at + i];
  }
  for (; at < bytes; at += 4) all[3] &= row[at + 3];
  for (std::size_t i = 7; i < lane; i += 4) all[3] &= all[i];
  return all[3] == 255;
}

void premultiply(const std::uint8_t* __restrict from, std::uint8_t* __restrict to,
                 std::size_t bytes) {
  for (std::size_t i = 0; i < bytes; i += 4) {
    const unsigned alpha = from[i + 3];
    for (std::size_t c = 0; c < 3; ++c) {
      const unsigned product = from[i + c] * alpha + 128;
      to[i + c] = static_cast<std::uint8_t>((product + (product >> 8)) >> 8);  // / 255, rounded
    }
    to[i + 3] = from[i + 3];
  }
}

std::uint8_t toByte(float value) {
  return static_cast<std::uint8_t>(std::clamp(value + 0.5F, 0.0F, 255.0F));
}

}  // namespace

QImage BoxScaler::scaled(const QImage& source, int wide, int high) {
  QImage target(wide, high, source.format());
  if (target.isNull()) return target;
  // Taken here: asking for it may move the pixels.
  auto* pixels = target.bits();
  const auto scaleRows = [&source, &target, pixels](int from, int to) {
    BoxScaler(source, target, pixels).scaleRows(from, to);
  };
  std::future<void> lowerHalf;
  if (std::int64_t{source.width()} * source.height() >= threadedPixels) {
    lowerHalf = std::async(std::launch::async, scaleRows, high / 2, high);
  }
  scaleRows(0, lowerHalf.valid() ? high / 2 : high);
  if (lowerHalf.valid()) lowerHalf.get();
  return target;
}

BoxScaler::BoxScaler(const QImage& source, const QImage& target, std::uint8_t* pixels)
    : source_(source),
      target_(target),
      pixels_(pixels),
      rowBytes_(static_cast<std::size_t>(source.width()) * source.depth() / 8),
      sum_(rowBytes_),
      whole_(rowBytes_),
      premultiplied_(source.hasAlphaChannel() ? rowBytes_ : 0) {}

void BoxScaler::scaleRows(int from, int to) {
  for (int row = from; row < to; ++row) {
    averageRows(row);
    auto* target = pixels_ + row * target_.bytesPerLine();
    source_.hasAlphaChannel() ? averageColumns<4>(target) : averageColumns<3>(target);
  }
}

// Lengths along an axis count in fractions: a source pixel is as long as the target has pixels, a
// target pixel as long as the source has.

void BoxScaler::averageRows(int targetRow) {
  const std::int64_t sourceLength = target_.height();
  const std::int64_t begin = std::int64_t{targetRow} * source_.height();
  const std::int64_t end = begin + source_.height();
  std::fill(sum_.begin(), sum_.end(), 0.0F);
  for (auto row = begin / sourceLength; row * sourceLength < end; ++row) {
    const auto covered =
        std::min(end, (row + 1) * sourceLength) - std::max(begin, row * sourceLength);
    if (covered == sourceLength) {
      addWhole(sourceRow(row));
    } else {
      addWeighted(sourceRow(row), static_cast<float>(covered) / static_cast<float>(sourceLength));
    }
  }
  flushWhole();
}

const std::uint8_t* BoxScaler::sourceRow(std::int64_t row) {
  const auto* bytes = source_.constScanLine(static_cast<int>(row));
  if (!source_.hasAlphaChannel() || isOpaque(bytes, rowBytes_)) return bytes;
  premultiply(bytes, premultiplied_.data(), rowBytes_);
  return premultiplied_.data();
}

void BoxScaler::addWhole(const std::uint8_t* row) {
  inLanes(row, whole_.data(), rowBytes_,
          [](std::uint8_t from, std::uint16_t& to) { to = static_cast<std::uint16_t>(to + from); });
  if (++wholeRows_ == wholeRowsMaximum) flushWhole();
}

void BoxScaler::addWeighted(const std::uint8_t* row, float weight) {
  inLanes(row, sum_.data(), rowBytes_,
          [weight](std::uint8_t from, float& to) { to += weight * from; });
}

void BoxScaler::flushWhole() {
  if (wholeRows_ == 0) return;
  wholeRows_ = 0;
  inLanes(whole_.data(), sum_.data(), rowBytes_, [](std::uint16_t from, float& to) { to += from; });
  std::fill(whole_.begin(), whole_.end(), std::uint16_t{0});
}

template <int channels>
void BoxScaler::averageColumns(std::uint8_t* target) const {
  const std::int64_t sourceLength = target_.width();
  const std::int64_t targetLength = source_.width();
  const float area = static_cast<float>(targetLength) / static_cast<float>(sourceLength) *
                     static_cast<float>(source_.height()) / static_cast<float>(target_.height());
  for (std::int64_t begin = 0; begin < sourceLength * targetLength; begin += targetLength) {
    const auto end = begin + targetLength;
    float total[channels] = {};
    const auto add = [&](std::int64_t column, float weight) {
      const auto* pixel = &sum_[static_cast<std::size_t>(column) * channels];
      for (int c = 0; c < channels; ++c) total[c] += weight * pixel[c];
    };
    for (auto column = begin / sourceLength; column * sourceLength < end; ++column) {
      const auto covered =
          std::min(end, (column + 1) * sourceLength) - std::max(begin, column * sourceLength);
      add(column, static_cast<float>(covered) / static_cast<float>(sourceLength));
    }
    float scale = 1.0F / area;
    if constexpr (channels == 4) {
      const auto alpha = total[3] * scale;
      target[3] = toByte(alpha);
      scale = alpha > 0 ? 255.0F / total[3] : 0.0F;
    }
    for (int c = 0; c < 3; ++c) target[c] = toByte(total[c] * scale);
    target += channels;
  }
}

}  // namespace zephyx
