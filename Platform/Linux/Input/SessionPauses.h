#pragma once

#include <QtCore/QObject>
#include <functional>

namespace zephyx {

/// Tells when the computer is about to sleep and when the user's session is to be locked, as the
/// system's log-in manager says; never where there is none. Main thread.
class SessionPauses final : public QObject {
  Q_OBJECT

 public:
  explicit SessionPauses(std::function<void()> onPause);
  ~SessionPauses() override;

 private slots:
  void prepareForSleep(bool isBeginning);
  void lock();

 private:
  const std::function<void()> onPause_;
};

}  // namespace zephyx
