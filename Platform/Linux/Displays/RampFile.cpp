#include "Platform/Linux/Displays/RampFile.h"

#include <unistd.h>

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <utility>

#include "Platform/PrivateFile.h"

namespace zephyx {
namespace {

constexpr auto streamVersion = QDataStream::Qt_6_0;

using Levels = QList<quint16>;
using StoredRamps = QMap<quint32, QList<Levels>>;

Levels stored(const std::vector<std::uint16_t>& channel) {
  return {channel.begin(), channel.end()};
}

std::vector<std::uint16_t> channel(const Levels& levels) {
  return {levels.begin(), levels.end()};
}

}  // namespace

RampFile::RampFile(std::string path) : path_(std::move(path)) {}

RampFile::Ramps RampFile::read() const {
  QFile file(QString::fromStdString(path_));
  if (path_.empty() || !file.open(QIODevice::ReadOnly)) return {};
  QDataStream stream(&file);
  stream.setVersion(streamVersion);
  StoredRamps all;
  stream >> all;
  if (stream.status() != QDataStream::Ok) return {};
  Ramps ramps;
  for (auto each = all.cbegin(); each != all.cend(); ++each) {
    if (each->size() != 3) return {};
    ramps[each.key()] = {channel(each->at(0)), channel(each->at(1)), channel(each->at(2))};
  }
  return ramps;
}

void RampFile::write(const Ramps& ramps) const {
  if (path_.empty()) return;
  if (ramps.empty()) {
    unlink(path_.c_str());
    return;
  }
  StoredRamps all;
  for (const auto& [display, ramp] : ramps) {
    all[display] = {stored(ramp.red), stored(ramp.green), stored(ramp.blue)};
  }
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream.setVersion(streamVersion);
  stream << all;
  writePrivateFile(path_, {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size())});
}

}  // namespace zephyx
