#pragma once

#include <pulse/pulseaudio.h>

namespace zephyx {

/// The functions of libpulse in use, found when this object is made. Linked, the library and the
/// twenty that it needs would slow down every start, and a system without sound would have to have
/// them. It stays loaded.
class PulseLibrary {
  struct Symbol {
    void* address;
    template <typename Function>
    operator Function*() const {
      return reinterpret_cast<Function*>(address);
    }
  };
  Symbol find(const char* name);

  void* library_;
  bool isComplete_;

 public:
  PulseLibrary();
  PulseLibrary(const PulseLibrary&) = delete;
  PulseLibrary& operator=(const PulseLibrary&) = delete;

  /// False when the system does not have it: nothing else may be used then.
  bool isLoaded() const { return isComplete_; }

  decltype(::pa_mainloop_new)* mainloopNew = find("pa_mainloop_new");
  decltype(::pa_mainloop_free)* mainloopFree = find("pa_mainloop_free");
  decltype(::pa_mainloop_get_api)* mainloopGetApi = find("pa_mainloop_get_api");
  decltype(::pa_mainloop_run)* mainloopRun = find("pa_mainloop_run");

  decltype(::pa_context_new)* contextNew = find("pa_context_new");
  decltype(::pa_context_unref)* contextUnref = find("pa_context_unref");
  decltype(::pa_context_connect)* contextConnect = find("pa_context_connect");
  decltype(::pa_context_disconnect)* contextDisconnect = find("pa_context_disconnect");
  decltype(::pa_context_get_state)* contextGetState = find("pa_context_get_state");
  decltype(::pa_context_set_state_callback)* contextSetStateCallback =
      find("pa_context_set_state_callback");
  decltype(::pa_context_errno)* contextErrno = find("pa_context_errno");
  decltype(::pa_context_subscribe)* contextSubscribe = find("pa_context_subscribe");
  decltype(::pa_context_set_subscribe_callback)* contextSetSubscribeCallback =
      find("pa_context_set_subscribe_callback");
  decltype(::pa_context_get_source_info_by_name)* contextGetSourceInfoByName =
      find("pa_context_get_source_info_by_name");
  decltype(::pa_context_set_source_mute_by_index)* contextSetSourceMuteByIndex =
      find("pa_context_set_source_mute_by_index");
  decltype(::pa_context_set_source_volume_by_index)* contextSetSourceVolumeByIndex =
      find("pa_context_set_source_volume_by_index");
  decltype(::pa_operation_unref)* operationUnref = find("pa_operation_unref");
  decltype(::pa_cvolume_avg)* cvolumeAvg = find("pa_cvolume_avg");
  decltype(::pa_cvolume_set)* cvolumeSet = find("pa_cvolume_set");
};

}  // namespace zephyx
