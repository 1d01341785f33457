#include "Screens/EventStream.h"

#include <algorithm>
#include <utility>

namespace zephyx {
namespace {

constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

}  // namespace

bool EventStream::feed(QByteArrayView bytes) {
  while (!bytes.isEmpty() && !stopped_) {
    if (std::exchange(afterReturn_, false) && bytes.front() == '\n') {
      bytes = bytes.sliced(1);
      continue;
    }
    const auto end =
        std::find_if(bytes.begin(), bytes.end(), [](char c) { return c == '\n' || c == '\r'; });
    const qsizetype length = end - bytes.begin();
    if (line_.size() + length > maximumSize) return false;
    line_.append(bytes.first(length));
    if (end == bytes.end()) break;
    afterReturn_ = *end == '\r';
    bytes = bytes.sliced(length + 1);
    if (!endLine()) return false;
  }
  return true;
}

bool EventStream::endLine() {
  QByteArray line = std::exchange(line_, {});
  if (std::exchange(isFirstLine_, false) && line.startsWith(byteOrderMark)) line.remove(0, 3);
  if (line.isEmpty()) {
    dispatch();
    return true;
  }
  const qsizetype colon = line.indexOf(':');
  const QByteArrayView field = QByteArrayView(line).first(colon < 0 ? line.size() : colon);
  if (field != QByteArrayView("data")) return true;
  QByteArrayView value = colon < 0 ? QByteArrayView() : QByteArrayView(line).sliced(colon + 1);
  if (value.startsWith(' ')) value = value.sliced(1);
  if (data_.size() + value.size() + 1 > maximumSize) return false;
  if (std::exchange(hasData_, true)) data_.append('\n');
  data_.append(value);
  return true;
}

void EventStream::dispatch() {
  if (!std::exchange(hasData_, false)) return;
  stopped_ = !handler_(std::exchange(data_, {}));
}

void EventStream::finish() {
  if (!stopped_ && !line_.isEmpty()) endLine();
  if (!stopped_) dispatch();
}

}  // namespace zephyx
