#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "Channel/MethodChannel.h"
#include "Platform/LifetimeGuard.h"
#include "Platform/Registration.h"

namespace zephyx {

class Application;
class ClipboardCapture;
class Dispatch;
class EventPoster;
class Pasteboard;
class PasteboardContents;
class Platform;
class RunningApplication;
class SystemLog;
class Workspace;

/// Watches the general pasteboard and sends an event for every copy made in another program; pastes
/// back into the application that is remembered. Main thread; the contents are read on the global
/// queue.
class ClipboardMonitor {
 public:
  static ClipboardMonitor& shared();
  explicit ClipboardMonitor(Platform& platform);
  ~ClipboardMonitor();

  /// Where events go: the clipboard panel's channel.
  std::weak_ptr<MethodChannel> methodChannel;
  /// The change count last seen.
  std::int64_t lastChangeCount = 0;
  /// The change count of a write of our own, which is not an entry; stays until it is met.
  std::optional<std::int64_t> ignoreNextChangeCount;
  /// The paste-back target.
  std::shared_ptr<RunningApplication> rememberedApp;
  /// While true, polling does nothing.
  bool isSuspended = false;
  /// Called when the system announces a change meanwhile.
  std::function<void()> onChangeWhileSuspended;

  /// Polls every 0.4 s from now on, and at once when the system announces a change. What is on the
  /// pasteboard already is not recorded.
  void start();
  /// Looks whether the pasteboard has changed and captures it if so.
  void poll();

  /// Brings the paste target forward. True: the paste was delivered here (notes editor); false: the
  /// caller is to type the paste chord.
  bool activatePasteTarget();
  /// Types the paste chord once the target is active, asking again every 0.1 s, ten times at most;
  /// never types into another program. `completion` runs once in every outcome while this object
  /// lives. The first call passes attempt 0.
  void synthesizePasteWhenTargetActive(int attempt, std::function<void()> completion);
  void requestActivation(RunningApplication& application);

 private:
  using Sequence = std::uint64_t;

  void capture(std::shared_ptr<PasteboardContents> contents);
  void finishCapture(Sequence sequence, std::optional<Map> entry);
  void sendEvent(Map entry);

  Application& application_;
  Dispatch& dispatch_;
  Pasteboard& pasteboard_;
  Workspace& workspace_;
  SystemLog& log_;
  EventPoster& eventPoster_;

  std::shared_ptr<const ClipboardCapture> reader_;
  Registration timer_;
  Registration announcements_;

  // Captures run at the same time and end in any order; events leave in the order of the copies.
  Sequence nextCapture_ = 0;
  Sequence nextEvent_ = 0;
  std::map<Sequence, std::optional<Map>> finishedCaptures_;

  LifetimeGuard lifetime_;
};

}  // namespace zephyx
