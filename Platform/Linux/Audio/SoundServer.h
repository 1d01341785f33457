#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>

#include "Platform/Linux/Audio/InputDevice.h"
#include "Platform/Linux/Audio/PulseLibrary.h"

namespace zephyx {

/// The user's sound server over its own protocol: follows the default source, and comes back when
/// the server does. Belongs to the thread of its main loop.
class SoundServer {
 public:
  using InputHandler = std::function<void(const std::optional<InputDevice>&)>;
  /// Gets an `audioStatus`. Called once, at the latest when the connection is lost.
  using Completion = std::function<void(std::int32_t)>;

  /// `onInput` is told the default source, nothing when there is none, after each change.
  SoundServer(const PulseLibrary& pulse, pa_mainloop_api& loop, InputHandler onInput);
  SoundServer(const SoundServer&) = delete;
  SoundServer& operator=(const SoundServer&) = delete;
  ~SoundServer();

  /// Where none answered, looks again at once: the user is looking too.
  void retryNow();
  void setMute(std::uint32_t source, bool muted, Completion done);
  void setVolume(std::uint32_t source, std::uint8_t channels, float volume, Completion done);

 private:
  struct Change {
    SoundServer& server;
    Completion done;
  };
  struct ContextEnd {
    const PulseLibrary* pulse;
    void operator()(pa_context* context) const;
  };

  void connect();
  void connectLater();
  void stateChanged();
  void readInput();
  void inputRead();
  bool isReady() const;
  InputDevice describe(const pa_source_info& source) const;
  /// True when the request was sent.
  bool isSent(pa_operation* operation) const;
  /// The newest change is under way, or over when it was not sent.
  void follow(pa_operation* operation);
  void finish(const Change& change, bool isDone);

  static void contextChanged(pa_context* context, void* server);
  static void subscribed(pa_context* context, pa_subscription_event_type_t event,
                         std::uint32_t index, void* server);
  static void sourceRead(pa_context* context, const pa_source_info* source, int isLast,
                         void* server);
  static void changed(pa_context* context, int isDone, void* change);

  const PulseLibrary& pulse_;
  pa_mainloop_api& loop_;
  InputHandler onInput_;
  pa_time_event* retry_ = nullptr;
  double retryDelay_;
  bool isReading_ = false;
  bool isOutdated_ = false;  ///< something changed while the source was being read
  std::optional<InputDevice> found_;
  std::list<Change> changes_;  ///< under way
  std::unique_ptr<pa_context, ContextEnd> context_;
};

}  // namespace zephyx
