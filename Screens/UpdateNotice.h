#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtCore/QString>

#include "Channel/MethodChannel.h"
#include "Platform/LifetimeGuard.h"

namespace zephyx {

/// What a screen knows of a new version of the program. Main thread.
class UpdateNotice : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("made by the program")
  Q_PROPERTY(QString version READ version NOTIFY versionChanged)

 public:
  /// Asks the host what is known already. The channel outlives this object.
  explicit UpdateNotice(MethodChannel& channel);

  /// Empty when there is none to tell of.
  QString version() const { return version_; }
  /// The user wants to see it.
  Q_INVOKABLE void open();
  /// True when the host's call was about updates; it is to be answered with null then.
  bool handle(const MethodCall& call);

 signals:
  void versionChanged();

 private:
  void setVersion(const Value* version);

  MethodChannel& channel_;
  QString version_;
  LifetimeGuard guard_;
};

}  // namespace zephyx
