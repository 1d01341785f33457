#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QAbstractListModel>
#include <QtCore/QElapsedTimer>
#include <QtCore/QStringList>
#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

#include "Channel/MethodChannel.h"
#include "Platform/LifetimeGuard.h"

namespace zephyx {

/// The hotkeys as the host has them, one in each row, and the recording of a new combination. Main
/// thread.
class HotkeySettings : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the program")
  Q_PROPERTY(bool recording READ isRecording NOTIFY recordingChanged)
  Q_PROPERTY(bool allUsual READ allUsual NOTIFY hotkeysChanged)
  Q_PROPERTY(QString opener READ opener NOTIFY hotkeysChanged)

 public:
  enum Role {
    nameRole = Qt::UserRole + 1,
    purposeRole,
    keysRole,  ///< the keys' names, in order
    usualRole,
    recordingRole,
    problemRole,
  };

  /// A recording that ends on its own after `timeout` ended because nothing was pressed. The
  /// channel outlives this object.
  explicit HotkeySettings(MethodChannel& channel,
                          std::chrono::milliseconds timeout = std::chrono::milliseconds(5'900));

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  bool isRecording() const { return recordingRow_ >= 0; }
  bool allUsual() const;
  /// The combination that shows the program, "Shift+Super+Space"; empty before the host has told.
  QString opener() const;

  /// Asks the host: the keys' names follow the keyboard's layout.
  Q_INVOKABLE void refresh();
  Q_INVOKABLE void record(int row);
  Q_INVOKABLE void cancelRecording();
  Q_INVOKABLE void reset(int row);
  Q_INVOKABLE void resetAll();

 signals:
  void recordingChanged();
  void hotkeysChanged();

 private:
  struct Row {
    std::int64_t id;
    QStringList keys;
    bool usual;
    QString problem;
  };

  static std::optional<Row> rowFrom(const Value& payload);
  void takeAll(const MethodReply& reply);
  void takeRecording(std::int64_t id, const MethodReply& reply);
  void takeOne(std::int64_t id, const MethodReply& reply);
  void endRecording();
  void setProblem(int row, const QString& problem);
  void changed(int row);
  int rowOf(std::int64_t id) const;

  MethodChannel& channel_;
  std::chrono::milliseconds timeout_;
  std::vector<Row> rows_;
  int recordingRow_ = -1;
  std::uint64_t recordings_ = 0;
  QElapsedTimer recordingTime_;
  LifetimeGuard guard_;
};

}  // namespace zephyx
