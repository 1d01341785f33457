#include "Platform/Linux/Audio/SoundServer.h"

#include <sys/time.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "Platform/AudioHardware.h"

namespace zephyx {
namespace {

constexpr const char* defaultSource = "@DEFAULT_SOURCE@";
constexpr double shortestRetryDelay = 0.1;
constexpr double longestRetryDelay = 30;  // each try costs a session without sound some time

timeval fromNow(double seconds) {
  timeval now{};
  gettimeofday(&now, nullptr);
  const timeval delay{static_cast<time_t>(seconds),
                      static_cast<suseconds_t>(std::fmod(seconds, 1) * 1e6)};
  timeval sum{};
  timeradd(&now, &delay, &sum);
  return sum;
}

}  // namespace

void SoundServer::ContextEnd::operator()(pa_context* context) const {
  pulse->contextSetStateCallback(context, nullptr, nullptr);
  pulse->contextSetSubscribeCallback(context, nullptr, nullptr);
  pulse->contextDisconnect(context);
  pulse->contextUnref(context);
}

SoundServer::SoundServer(const PulseLibrary& pulse, pa_mainloop_api& loop, InputHandler onInput)
    : pulse_(pulse),
      loop_(loop),
      onInput_(std::move(onInput)),
      retryDelay_(shortestRetryDelay),
      context_(nullptr, ContextEnd{&pulse}) {
  connect();
}

SoundServer::~SoundServer() {
  if (retry_) loop_.time_free(retry_);
}

void SoundServer::connect() {
  context_.reset(pulse_.contextNew(&loop_, "Zephyx"));
  pulse_.contextSetStateCallback(context_.get(), contextChanged, this);
  // A server of its own would be no use to anybody.
  if (pulse_.contextConnect(context_.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
    connectLater();
  }
}

void SoundServer::connectLater() {
  isReading_ = false;
  for (const auto& change : std::exchange(changes_, {})) change.done(audioStatus::badDevice);
  onInput_(std::nullopt);
  if (retry_) return;
  const auto moment = fromNow(retryDelay_);
  retryDelay_ = std::min(2 * retryDelay_, longestRetryDelay);
  retry_ = loop_.time_new(
      &loop_, &moment,
      [](pa_mainloop_api* loop, pa_time_event* event, const timeval*, void* server) {
        auto& self = *static_cast<SoundServer*>(server);
        loop->time_free(event);
        self.retry_ = nullptr;
        self.connect();
      },
      this);
}

void SoundServer::retryNow() {
  if (!retry_) return;
  loop_.time_free(std::exchange(retry_, nullptr));
  connect();
}

void SoundServer::contextChanged(pa_context*, void* server) {
  static_cast<SoundServer*>(server)->stateChanged();
}

void SoundServer::stateChanged() {
  switch (pulse_.contextGetState(context_.get())) {
    case PA_CONTEXT_READY:
      retryDelay_ = shortestRetryDelay;
      pulse_.contextSetSubscribeCallback(context_.get(), subscribed, this);
      isSent(pulse_.contextSubscribe(context_.get(),
                                     static_cast<pa_subscription_mask_t>(
                                         PA_SUBSCRIPTION_MASK_SOURCE | PA_SUBSCRIPTION_MASK_SERVER),
                                     nullptr, nullptr));
      readInput();
      break;
    case PA_CONTEXT_FAILED:
    case PA_CONTEXT_TERMINATED:
      connectLater();
      break;
    default:
      break;
  }
}

bool SoundServer::isReady() const {
  return context_ && pulse_.contextGetState(context_.get()) == PA_CONTEXT_READY;
}

bool SoundServer::isSent(pa_operation* operation) const {
  if (operation) pulse_.operationUnref(operation);
  return operation;
}

void SoundServer::subscribed(pa_context*, pa_subscription_event_type_t, std::uint32_t,
                             void* server) {
  static_cast<SoundServer*>(server)->readInput();
}

void SoundServer::readInput() {
  if (isReading_) {
    isOutdated_ = true;
    return;
  }
  isOutdated_ = false;
  isReading_ =
      isSent(pulse_.contextGetSourceInfoByName(context_.get(), defaultSource, sourceRead, this));
}

void SoundServer::sourceRead(pa_context*, const pa_source_info* source, int isLast, void* server) {
  auto& self = *static_cast<SoundServer*>(server);
  if (isLast) {
    self.inputRead();
  } else if (source->monitor_of_sink == PA_INVALID_INDEX) {
    self.found_ = self.describe(*source);
  }
}

void SoundServer::inputRead() {
  isReading_ = false;
  onInput_(std::exchange(found_, std::nullopt));
  if (isOutdated_) readInput();
}

InputDevice SoundServer::describe(const pa_source_info& source) const {
  const auto volume = static_cast<float>(pulse_.cvolumeAvg(&source.volume));
  return {.index = source.index,
          .isMuted = source.mute != 0,
          .volume = std::min(volume / static_cast<float>(PA_VOLUME_NORM), 1.0F),
          .channels = source.volume.channels};
}

void SoundServer::setMute(std::uint32_t source, bool muted, Completion done) {
  if (!isReady()) return done(audioStatus::badDevice);
  changes_.push_back({*this, std::move(done)});
  follow(
      pulse_.contextSetSourceMuteByIndex(context_.get(), source, muted, changed, &changes_.back()));
}

void SoundServer::setVolume(std::uint32_t source, std::uint8_t channels, float volume,
                            Completion done) {
  if (!isReady()) return done(audioStatus::badDevice);
  pa_cvolume volumes{};
  pulse_.cvolumeSet(
      &volumes, channels,
      static_cast<pa_volume_t>(std::lround(std::clamp(volume, 0.0F, 1.0F) * PA_VOLUME_NORM)));
  changes_.push_back({*this, std::move(done)});
  follow(pulse_.contextSetSourceVolumeByIndex(context_.get(), source, &volumes, changed,
                                              &changes_.back()));
}

void SoundServer::follow(pa_operation* operation) {
  if (!isSent(operation)) finish(changes_.back(), false);
}

void SoundServer::changed(pa_context*, int isDone, void* change) {
  const auto& known = *static_cast<const Change*>(change);
  known.server.finish(known, isDone != 0);
}

void SoundServer::finish(const Change& change, bool isDone) {
  const auto done = change.done;
  changes_.remove_if([&](const Change& each) { return &each == &change; });
  if (isDone) return done(audioStatus::noErr);
  const bool isGone = pulse_.contextErrno(context_.get()) == PA_ERR_NOENTITY;
  done(isGone ? audioStatus::badDevice : audioStatus::unspecified);
}

}  // namespace zephyx
