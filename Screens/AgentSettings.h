#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QAbstractListModel>
#include <string>
#include <vector>

#include "Channel/MethodChannel.h"
#include "Platform/LifetimeGuard.h"

namespace zephyx {

/// The coding agents as the host lists them, and which of them the status menu shows. Main thread.
class AgentSettings : public QAbstractListModel {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the program")

 public:
  enum Role {
    nameRole = Qt::UserRole + 1,
    purposeRole,
    shownRole,
    problemRole,
  };

  /// The channel outlives this object.
  explicit AgentSettings(MethodChannel& channel) : channel_(channel) {}

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  /// Asks the host.
  Q_INVOKABLE void refresh();
  Q_INVOKABLE void setShown(int row, bool shown);

 private:
  struct Row {
    std::string id;
    std::string name;
    bool shown;
    QString problem;
  };

  void takeAll(const MethodReply& reply);
  void takeOne(const std::string& id, bool wanted, const MethodReply& reply);

  MethodChannel& channel_;
  std::vector<Row> rows_;
  LifetimeGuard guard_;
};

}  // namespace zephyx
