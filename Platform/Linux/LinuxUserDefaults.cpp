#include "Platform/Linux/LinuxUserDefaults.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <utility>

#include "Platform/PrivateFile.h"
#include "Platform/SystemLog.h"

namespace zephyx {
namespace {

constexpr std::chrono::milliseconds writeDelay(30);
const QString stringKey = QStringLiteral("string");
const QString dataKey = QStringLiteral("data");
const QString booleanKey = QStringLiteral("boolean");
const QString numberKey = QStringLiteral("number");

}  // namespace

LinuxUserDefaults::LinuxUserDefaults(std::string folder, SystemLog& log,
                                     std::chrono::milliseconds retryDelay)
    : folder_(std::move(folder)),
      path_(folder_ + "/defaults.json"),
      log_(log),
      retryDelay_(retryDelay) {
  writeSoon_.setSingleShot(true);
  QObject::connect(&writeSoon_, &QTimer::timeout, &writeSoon_, [this] { write(); });
  load();
}

LinuxUserDefaults::~LinuxUserDefaults() {
  if (writeSoon_.isActive()) write();
}

void LinuxUserDefaults::load() {
  QFile file(QString::fromStdString(path_));
  const bool isOpen = file.open(QIODevice::ReadOnly);
  if (!isOpen && !QFileInfo::exists(file.fileName())) return;
  const auto document = isOpen ? QJsonDocument::fromJson(file.readAll()) : QJsonDocument();
  if (document.isObject()) {
    values_ = document.object();
    return;
  }
  // What was set aside before is not written over either.
  auto aside = path_ + ".damaged";
  for (int number = 2; QFileInfo::exists(QString::fromStdString(aside)); ++number) {
    aside = path_ + ".damaged-" + std::to_string(number);
  }
  std::rename(path_.c_str(), aside.c_str());
  log_.log("[Defaults] settings file not readable, kept as " + aside);
}

std::optional<Bytes> LinuxUserDefaults::data(const std::string& key) const {
  const auto value = values_[QString::fromStdString(key)][dataKey];
  if (!value.isString()) return std::nullopt;
  const auto decoded = QByteArray::fromBase64Encoding(value.toString().toLatin1(),
                                                      QByteArray::AbortOnBase64DecodingErrors);
  if (!decoded) return std::nullopt;
  return Bytes((*decoded).begin(), (*decoded).end());
}

std::optional<std::string> LinuxUserDefaults::string(const std::string& key) const {
  const auto value = values_[QString::fromStdString(key)][stringKey];
  if (!value.isString()) return std::nullopt;
  return value.toString().toStdString();
}

std::optional<bool> LinuxUserDefaults::boolean(const std::string& key) const {
  const auto value = values_[QString::fromStdString(key)][booleanKey];
  return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<double> LinuxUserDefaults::number(const std::string& key) const {
  const auto value = values_[QString::fromStdString(key)][numberKey];
  return value.isDouble() ? std::optional(value.toDouble()) : std::nullopt;
}

void LinuxUserDefaults::setData(const std::string& key, BytesView value) {
  const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(value.data()),
                                             static_cast<qsizetype>(value.size()));
  change(key, QJsonObject{{dataKey, QString::fromLatin1(bytes.toBase64())}});
}

void LinuxUserDefaults::setString(const std::string& key, const std::string& value) {
  change(key, QJsonObject{{stringKey, QString::fromStdString(value)}});
}

void LinuxUserDefaults::setBoolean(const std::string& key, bool value) {
  change(key, QJsonObject{{booleanKey, value}});
}

void LinuxUserDefaults::setNumber(const std::string& key, double value) {
  change(key, QJsonObject{{numberKey, value}});
}

void LinuxUserDefaults::removeObject(const std::string& key) {
  change(key, QJsonValue::Undefined);
}

void LinuxUserDefaults::change(const std::string& key, const QJsonValue& value) {
  const auto name = QString::fromStdString(key);
  if (values_[name] == value) return;
  values_[name] = value;  // an undefined value removes the key
  if (!writeSoon_.isActive() || isFailing_) writeSoon_.start(writeDelay);
}

void LinuxUserDefaults::write() {
  const auto bytes = QJsonDocument(values_).toJson();
  const BytesView contents(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size()));
  const bool isWritten = makePrivateFolder(folder_) && writePrivateFile(path_, contents);
  if (!isWritten) writeSoon_.start(retryDelay_);
  if (std::exchange(isFailing_, !isWritten) != isFailing_) {
    log_.log(isWritten ? "[Defaults] settings file written again: " + path_
                       : "[Defaults] settings file not written, tried again: " + path_);
  }
}

}  // namespace zephyx
