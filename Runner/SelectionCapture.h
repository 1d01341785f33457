#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/LifetimeGuard.h"

namespace zephyx {

class Accessibility;
class DispatchQueue;
class EventPoster;
class Pasteboard;
class PasteboardItems;
class Platform;
class SystemLog;

/// Fetches the text that is selected in the application in front: types the copy chord, waits for
/// the pasteboard to change, reads the text and puts back what was there before. Main thread.
class SelectionCapture {
 public:
  /// Nothing when there is no text.
  using Completion = std::function<void(std::optional<std::string> text)>;

  /// `completion` runs once, on the main thread, while the host lives. Without the permission to
  /// type it gets the pasteboard's current text, and the system asks the user for the permission.
  /// Nothing that happens to the pasteboard here becomes a history entry.
  static void capture(Completion completion);

  explicit SelectionCapture(Platform& platform);

 private:
  struct Session {
    std::shared_ptr<const PasteboardItems> savedItems;
    std::int64_t baseline = 0;
    bool isOver = false;  ///< changed or timed out
    Completion completion;
  };
  using SessionPointer = std::shared_ptr<Session>;

  void begin(Completion completion);
  void save(const SessionPointer& session, int attempt);
  void typeCopyChord(const SessionPointer& session);
  void pollLater(SessionPointer session, double elapsed);
  void pollForChange(const SessionPointer& session, double elapsed);
  void lookForChanges();
  void finishWithChange(const SessionPointer& session);
  void timeOut(const SessionPointer& session);
  /// Reads away from the main thread: the text's owner may take its time.
  void readString(Completion use);
  void resumeMonitor(const SessionPointer& session);

  Accessibility& accessibility_;
  DispatchQueue& mainQueue_;
  DispatchQueue& globalQueue_;
  EventPoster& eventPoster_;
  Pasteboard& pasteboard_;
  SystemLog& log_;
  std::vector<SessionPointer> running_;  ///< these hold the monitor suspended
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
