#include "Platform/Linux/Displays/RampFile.h"

#include <unistd.h>

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <utility>

#include "Platform/PrivateFile.h"

namespace zephyx {
namespace {

constexpr auto streamVersion = QDataStream::Qt_6_0;
/// The longest that a server's ramp can be. A damaged file must not cost memory.
constexpr quint32 maximumLevels = 65'536;

void writeChannel(QDataStream& stream, const std::vector<std::uint16_t>& channel) {
  stream << static_cast<quint32>(channel.size());
  for (const auto level : channel) stream << level;
}

std::vector<std::uint16_t> readChannel(QDataStream& stream) {
  quint32 size = 0;
  stream >> size;
  if (size > maximumLevels) stream.setStatus(QDataStream::ReadCorruptData);
  std::vector<std::uint16_t> channel(stream.status() == QDataStream::Ok ? size : 0);
  for (auto& level : channel) stream >> level;
  return channel;
}

}  // namespace

RampFile::RampFile(std::string path) : path_(std::move(path)) {}

RampFile::Ramps RampFile::read() const {
  QFile file(QString::fromStdString(path_));
  if (path_.empty() || !file.open(QIODevice::ReadOnly)) return {};
  QDataStream stream(&file);
  stream.setVersion(streamVersion);
  quint32 count = 0;
  stream >> count;
  Ramps ramps;
  for (; count > 0 && stream.status() == QDataStream::Ok; --count) {
    quint32 display = 0;
    stream >> display;
    auto& ramp = ramps[display];
    for (auto* channel : {&ramp.red, &ramp.green, &ramp.blue}) *channel = readChannel(stream);
  }
  if (stream.status() != QDataStream::Ok) return {};
  return ramps;
}

void RampFile::write(const Ramps& ramps) const {
  if (path_.empty()) return;
  if (ramps.empty()) {
    unlink(path_.c_str());
    return;
  }
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream.setVersion(streamVersion);
  stream << static_cast<quint32>(ramps.size());
  for (const auto& [display, ramp] : ramps) {
    stream << display;
    for (const auto* channel : {&ramp.red, &ramp.green, &ramp.blue}) writeChannel(stream, *channel);
  }
  writePrivateFile(path_, {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size())});
}

}  // namespace zephyx
