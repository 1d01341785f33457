#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QTimer>
#include <chrono>
#include <string>

#include "Platform/UserDefaults.h"

namespace zephyx {

class SystemLog;

/// One JSON file that only the user can read, replaced as a whole soon after a change and at the
/// latest when this object goes; tried again as long as that fails. A file that cannot be
/// understood is put aside.
class LinuxUserDefaults final : public UserDefaults {
 public:
  /// `folder` is made when there is something to write.
  LinuxUserDefaults(std::string folder, SystemLog& log,
                    std::chrono::milliseconds retryDelay = std::chrono::seconds(10));
  ~LinuxUserDefaults() override;

  std::optional<Bytes> data(const std::string& key) const override;
  std::optional<std::string> string(const std::string& key) const override;
  std::optional<bool> boolean(const std::string& key) const override;
  std::optional<double> number(const std::string& key) const override;
  void setData(const std::string& key, BytesView value) override;
  void setString(const std::string& key, const std::string& value) override;
  void setBoolean(const std::string& key, bool value) override;
  void setNumber(const std::string& key, double value) override;
  void removeObject(const std::string& key) override;

 private:
  void load();
  void change(const std::string& key, const QJsonValue& value);
  void write();

  const std::string folder_;
  const std::string path_;
  SystemLog& log_;
  const std::chrono::milliseconds retryDelay_;
  QJsonObject values_;  ///< key -> {kind: value}, data in base64
  QTimer writeSoon_;
  bool isFailing_ = false;
};

}  // namespace zephyx
