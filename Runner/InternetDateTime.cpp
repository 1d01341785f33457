#include "Runner/InternetDateTime.h"

#include <chrono>
#include <cstddef>

namespace zephyx {
namespace {

/// Takes a text apart from its beginning; after a part that is not there, nothing more is read.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  int number(std::size_t digits) {
    if (rest_.size() < digits) return fail();
    int value = 0;
    for (const char c : rest_.substr(0, digits)) {
      if (c < '0' || c > '9') return fail();
      value = value * 10 + (c - '0');
    }
    rest_.remove_prefix(digits);
    return value;
  }

  bool skip(char expected) {
    if (rest_.empty() || rest_.front() != expected) return false;
    rest_.remove_prefix(1);
    return true;
  }

  void require(char expected) {
    if (!skip(expected)) fail();
  }

  /// The digits behind a decimal point, as a fraction of one.
  double fraction() {
    double value = 0;
    double unit = 1;
    while (!rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9') {
      unit /= 10;
      value += unit * (rest_.front() - '0');
      rest_.remove_prefix(1);
    }
    if (unit == 1) fail();
    return value;
  }

  bool succeeded() const { return !failed_ && rest_.empty(); }

 private:
  int fail() {
    failed_ = true;
    rest_ = {};
    return 0;
  }

  std::string_view rest_;
  bool failed_ = false;
};

}  // namespace

std::optional<double> parseInternetDateTime(std::string_view text) {
  using namespace std::chrono;
  Reader reader(text);
  const year year(reader.number(4));
  reader.require('-');
  const month month(static_cast<unsigned>(reader.number(2)));
  reader.require('-');
  const day day(static_cast<unsigned>(reader.number(2)));
  reader.require('T');
  const int hour = reader.number(2);
  reader.require(':');
  const int minute = reader.number(2);
  reader.require(':');
  const int second = reader.number(2);
  const double fraction = reader.skip('.') ? reader.fraction() : 0;

  int offsetMinutes = 0;
  if (!reader.skip('Z')) {
    const bool isWest = reader.skip('-');
    if (!isWest) reader.require('+');
    const int hours = reader.number(2);
    reader.require(':');
    const int minutes = reader.number(2);
    if (hours > 23 || minutes > 59) return std::nullopt;
    offsetMinutes = (hours * 60 + minutes) * (isWest ? -1 : 1);
  }

  const auto date = year / month / day;
  const bool isValid = reader.succeeded() && date.ok() && hour < 24 && minute < 60 && second <= 60;
  if (!isValid) return std::nullopt;
  const auto days = sys_days(date).time_since_epoch().count();
  const auto minutes = (days * 24L + hour) * 60L + minute - offsetMinutes;
  return static_cast<double>(minutes * 60 + second) + fraction;
}

}  // namespace zephyx
