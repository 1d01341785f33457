#include "Platform/Linux/Engines/LinuxFlutterEngine.h"

#include <utility>

#include "Platform/Dispatch.h"
#include "Platform/Linux/Engines/LinuxBinaryMessenger.h"

namespace zephyx {

LinuxFlutterEngine::LinuxFlutterEngine(Dispatch& dispatch, ScreenServices services)
    : services_(std::move(services)) {
  std::tie(hostEnd_, services_.messenger) = LinuxBinaryMessenger::makePair(dispatch.mainQueue());
}

LinuxFlutterEngine::~LinuxFlutterEngine() {
  shutDown();
}

bool LinuxFlutterEngine::run(const std::string& entryPoint) {
  if (program_) return true;
  program_ = makeScreenProgram(entryPoint, services_);
  return program_ != nullptr;
}

std::shared_ptr<BinaryMessenger> LinuxFlutterEngine::binaryMessenger() const {
  return hostEnd_;
}

void LinuxFlutterEngine::shutDown() {
  hostEnd_->cut();
  if (const auto handler = std::exchange(willShutDown_, nullptr)) handler();
  program_.reset();
}

}  // namespace zephyx
