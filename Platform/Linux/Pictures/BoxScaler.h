#pragma once

#include <QtGui/QImage>
#include <vector>

namespace zephyx {

/// Scales by averaging the area that each new pixel covers, with colours weighted by their opacity.
/// Used by one thread.
class BoxScaler {
 public:
  /// `source` is RGB888 or RGBA8888 and not empty; the result has its format. Null when memory is
  /// short.
  static QImage scaled(const QImage& source, int wide, int high);

 private:
  BoxScaler(const QImage& source, const QImage& target, std::uint8_t* pixels);

  void scaleRows(int from, int to);
  void averageRows(int targetRow);
  const std::uint8_t* sourceRow(std::int64_t row);
  void addWhole(const std::uint8_t* row);
  void addWeighted(const std::uint8_t* row, float weight);
  void flushWhole();
  template <int channels>
  void averageColumns(std::uint8_t* target) const;

  const QImage& source_;
  const QImage& target_;
  std::uint8_t* pixels_;  ///< of the target
  std::size_t rowBytes_;
  std::vector<float> sum_;            ///< of the rows under the current target row, by byte
  std::vector<std::uint16_t> whole_;  ///< rows of full weight not yet in `sum_`
  int wholeRows_ = 0;
  std::vector<std::uint8_t> premultiplied_;
};

}  // namespace zephyx
