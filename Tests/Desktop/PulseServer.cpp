#include "Tests/Desktop/PulseServer.h"

#include <cmath>
#include <stdexcept>

namespace zephyx {

PulseServer::PulseServer(const VirtualDesktop& desktop) : desktop_(desktop) {
  process_ = desktop.start(
      {"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
       "--disable-shm=yes", "-L", "module-native-protocol-unix auth-anonymous=1", "-L",
       "module-null-sink sink_name=speaker", "-L", "module-null-source source_name=mic0", "-L",
       "module-null-source source_name=mic1"});
  const bool answers = waitFor([&] {
    return desktop.run({"pactl", "set-default-source", "mic0"}).status == 0 ||
           !process_.isRunning();
  });
  if (!answers || !process_.isRunning()) throw std::runtime_error("pulseaudio did not start");
}

std::string PulseServer::pactl(const std::vector<std::string>& arguments) const {
  std::vector<std::string> command{"pactl"};
  command.insert(command.end(), arguments.begin(), arguments.end());
  auto [status, output] = desktop_.run(command);
  if (status != 0) throw std::runtime_error("pactl " + arguments.front() + ": " + output);
  return output;
}

void PulseServer::makeDefault(const std::string& source) const {
  pactl({"set-default-source", source});
}

void PulseServer::setMute(const std::string& source, bool muted) const {
  pactl({"set-source-mute", source, muted ? "1" : "0"});
}

void PulseServer::setVolume(const std::string& source, float volume) const {
  pactl({"set-source-volume", source, std::to_string(std::lround(volume * 100)) + "%"});
}

void PulseServer::unplugMicrophones() const {
  pactl({"unload-module", "module-null-source"});
}

bool PulseServer::hasClient(const std::string& name) const {
  return pactl({"list", "clients"}).find("\"" + name + "\"") != std::string::npos;
}

bool PulseServer::isMuted(const std::string& source) const {
  return pactl({"get-source-mute", source}).find("yes") != std::string::npos;
}

float PulseServer::volume(const std::string& source) const {
  // Volume: front-left: 32768 /  50% / -18.06 dB, ...
  const auto text = pactl({"get-source-volume", source});
  return std::stof(text.substr(text.find('/') + 1)) / 100;
}

}  // namespace zephyx
