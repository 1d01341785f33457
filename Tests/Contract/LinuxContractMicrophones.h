#pragma once

#include <optional>
#include <string>

#include "Tests/Contract/ContractMicrophones.h"
#include "Tests/Desktop/PulseServer.h"

namespace zephyx {

/// The sources of a PulseAudio server.
class LinuxContractMicrophones final : public ContractMicrophones {
 public:
  explicit LinuxContractMicrophones(const VirtualDesktop& desktop) : desktop_(desktop) {}

  void connect() override { server_.emplace(desktop_); }
  void disconnect() override { server_->unplugMicrophones(); }
  void makeDefault(int microphone) override { server_->makeDefault(name(microphone)); }
  void setMute(int microphone, bool muted) override { server_->setMute(name(microphone), muted); }
  void setVolume(int microphone, float volume) override {
    server_->setVolume(name(microphone), volume);
  }
  bool isMuted(int microphone) override { return server_->isMuted(name(microphone)); }
  float volume(int microphone) override { return server_->volume(name(microphone)); }

 private:
  static std::string name(int microphone) { return "mic" + std::to_string(microphone); }

  const VirtualDesktop& desktop_;
  std::optional<PulseServer> server_;
};

}  // namespace zephyx
