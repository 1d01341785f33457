#include "Runner/SessionLogReader.h"

#include <simdjson.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

#include "Runner/SessionLogText.h"

namespace zephyx {
namespace {

/// The nearest place at or before `at` where no character of a UTF-8 text is divided.
std::size_t characterBoundary(const char* text, std::size_t at) {
  constexpr std::size_t longestRest = 3;
  for (std::size_t back = 0; back <= longestRest && back <= at; ++back) {
    if ((static_cast<unsigned char>(text[at - back]) & 0xC0) != 0x80) return at - back;
  }
  return at;
}

/// Adds a line that stands in the file and is too long for the buffer.
bool addLine(const FileReader& file, std::uint64_t begin, std::uint64_t end, SessionLogLines& lines,
             ModelUsageTotals& totals) {
  const auto size = end - begin;
  if (size > simdjson::SIMDJSON_MAXSIZE_BYTES) return true;  // nothing could take it apart
  std::vector<char> line(size + SessionLogLines::padding);
  const auto read = file.readAt(begin, {line.data(), size});
  if (read) lines.aggregateModelUsage({line.data(), *read}, totals);
  return read.has_value();
}

}  // namespace

SessionLogReader::SessionLogReader(double since, SessionLogBuffer sizes)
    : sizes_(sizes),
      lines_(since),
      // Not made of zeros: what no line needs takes no memory.
      buffer_(new char[sizes.line + SessionLogLines::padding]) {}

void SessionLogReader::read(const std::string& path, ModelUsageTotals& totals) {
  FileReader file(path);
  if (!file.isOpen()) return;
  held_ = 0;
  atEnd_ = false;
  ModelUsageTotals ofFile;
  if (readLines(file, ofFile)) totals.add(ofFile);
}

bool SessionLogReader::readLines(FileReader& file, ModelUsageTotals& totals) {
  while (!atEnd_) {
    if (held_ == sizes_.line && !readLongLine(file, totals)) return false;
    const auto before = held_;
    if (!readMore(file)) return false;
    const std::string_view more(buffer_.get() + before, held_ - before);
    const auto lastLine = beginningOfLastLine(more);
    const auto complete = atEnd_ ? held_ : lastLine > 0 ? before + lastLine : 0;
    if (!isUtf8(complete)) return false;
    lines_.aggregateModelUsage({buffer_.get(), complete}, totals);
    dropFront(complete);
  }
  return true;
}

/// Goes to the end of the line that fills the buffer without keeping it. Only if it is one to be
/// looked at, it is read once more, whole.
bool SessionLogReader::readLongLine(FileReader& file, ModelUsageTotals& totals) {
  const auto begin = file.position() - held_;
  bool isMentioned = false;
  while (true) {
    const std::string_view text(buffer_.get(), held_);
    const auto length = std::min(text.find('\n'), held_);
    isMentioned = isMentioned || findUsageMention(text.substr(0, length)) != std::string_view::npos;
    if (length < held_ || atEnd_) {
      const auto end = file.position() - held_ + length;
      if (!isUtf8(length)) return false;
      if (isMentioned && !addLine(file, begin, end, lines_, totals)) return false;
      dropFront(std::min(length + 1, held_));
      return true;
    }
    // A mention may be divided too.
    const auto done = characterBoundary(buffer_.get(), held_ - usageMention.size());
    if (!isUtf8(done)) return false;
    dropFront(done);
    if (!readMore(file)) return false;
  }
}

/// Appends a block, or less when the buffer has less room. False when the file cannot be read.
bool SessionLogReader::readMore(FileReader& file) {
  const auto room = std::min(sizes_.block, sizes_.line - held_);
  const auto size = file.read({buffer_.get() + held_, room});
  held_ += size.value_or(0);
  atEnd_ = size.value_or(0) < room;
  return size.has_value();
}

/// Whether the front of the buffer, which must not end within a character, is UTF-8.
bool SessionLogReader::isUtf8(std::size_t size) const {
  return simdjson::validate_utf8(buffer_.get(), size);
}

void SessionLogReader::dropFront(std::size_t size) {
  held_ -= size;
  std::memmove(buffer_.get(), buffer_.get() + size, held_);
}

}  // namespace zephyx
