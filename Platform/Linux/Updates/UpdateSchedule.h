#pragma once

#include <QtCore/QString>
#include <chrono>

namespace zephyx {

class UserDefaults;

/// What is remembered of updates from start to start. Main thread.
class UpdateSchedule {
 public:
  UpdateSchedule(UserDefaults& defaults, std::chrono::seconds interval)
      : defaults_(defaults), interval_(interval) {}

  /// By the wall clock (seconds since 1970), which goes on while the machine sleeps. Also when the
  /// last check is in the future: the clock was wrong then.
  bool isDue(double now) const;
  void noteCheck(double now);

  /// The user does not want to hear of this version again.
  void skip(const QString& version);
  bool isSkipped(const QString& version) const;

 private:
  UserDefaults& defaults_;
  const std::chrono::seconds interval_;
};

}  // namespace zephyx
