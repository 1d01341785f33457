#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Platform/Linux/Clipboard/OwnerChange.h"
#include "Platform/Linux/Clipboard/SavedTargets.h"
#include "Platform/Linux/Clipboard/TypeFetch.h"

namespace zephyx {

/// Fetches everything that one copy offers, one target after the other, as far as time and memory
/// allow; an owner that leaves one question unanswered is asked nothing more. Used by the
/// connection's thread.
class TargetSaver : public std::enable_shared_from_this<TargetSaver> {
 public:
  TargetSaver(const ClipboardReading& reading, const OwnerChange& copy);

  void start();
  /// Somebody copied again: what is still to come is of no use.
  void supersede() { isSuperseded_ = true; }
  bool isFinished() const { return isFinished_; }
  /// When it is finished at the latest.
  ClipboardClock::time_point end() const { return end_; }
  /// Once.
  std::shared_ptr<const SavedTargets> takeTargets();

 private:
  void saveNext();
  void save(ConversionAnswer answer);

  const ClipboardReading& reading_;
  OwnerChange copy_;
  ClipboardClock::time_point end_;
  std::size_t bytesLeft_;
  std::vector<std::string> names_;  // from the last one to the first
  std::vector<SavedTarget> targets_;
  bool isSuperseded_ = false;
  bool isFinished_ = false;
};

}  // namespace zephyx
