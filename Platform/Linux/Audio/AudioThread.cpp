#include "Platform/Linux/Audio/AudioThread.h"

#include <pthread.h>

#include <memory>
#include <utility>

namespace zephyx {

AudioThread::AudioThread(SoundServer::InputHandler onInput)
    : thread_([this, onInput = std::move(onInput)]() mutable {
        pthread_setname_np(pthread_self(), "audio");
        run(std::move(onInput));
      }) {}

AudioThread::~AudioThread() {
  isStopping_ = true;
  wake_.raise();
  thread_.join();
}

void AudioThread::post(Command command) {
  if (!hasLibrary_) return;
  {
    const std::lock_guard lock(mutex_);
    commands_.push_back(std::move(command));
  }
  wake_.raise();
}

void AudioThread::run(SoundServer::InputHandler onInput) {
  const PulseLibrary pulse;
  hasLibrary_ = pulse.isLoaded();
  if (!hasLibrary_) return;
  const std::unique_ptr<pa_mainloop, decltype(pulse.mainloopFree)> loop(pulse.mainloopNew(),
                                                                        pulse.mainloopFree);
  auto& api = *pulse.mainloopGetApi(loop.get());
  SoundServer server(pulse, api, std::move(onInput));

  struct Wake {
    AudioThread& thread;
    SoundServer& server;
  } wake{*this, server};
  auto* event = api.io_new(
      &api, wake_.descriptor(), PA_IO_EVENT_INPUT,
      [](pa_mainloop_api* loopApi, pa_io_event*, int, pa_io_event_flags_t, void* data) {
        const auto& [thread, soundServer] = *static_cast<Wake*>(data);
        thread.wake_.lower();
        if (thread.isStopping_) return loopApi->quit(loopApi, 0);
        thread.runCommands(soundServer);
      },
      &wake);
  pulse.mainloopRun(loop.get(), nullptr);
  api.io_free(event);
}

void AudioThread::runCommands(SoundServer& server) {
  std::vector<Command> commands;
  {
    const std::lock_guard lock(mutex_);
    commands.swap(commands_);
  }
  for (const auto& command : commands) command(server);
}

}  // namespace zephyx
