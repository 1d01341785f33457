#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Platform/FlutterEngine.h"
#include "Platform/Linux/Engines/ScreenProgram.h"

namespace zephyx {

class Dispatch;
class LinuxBinaryMessenger;

/// Runs one screen program behind a pair of messengers.
class LinuxFlutterEngine final : public FlutterEngine {
 public:
  /// `services` without a messenger: the engine makes its own.
  LinuxFlutterEngine(Dispatch& dispatch, ScreenServices services);
  ~LinuxFlutterEngine() override;

  bool run(const std::string& entryPoint) override;
  std::shared_ptr<BinaryMessenger> binaryMessenger() const override;
  void shutDown() override;

  /// Null before `run` and after `shutDown`.
  ScreenProgram* program() const { return program_.get(); }
  /// Called before the program goes, so that its picture can go first.
  void setWillShutDown(std::function<void()> handler) { willShutDown_ = std::move(handler); }

 private:
  std::shared_ptr<LinuxBinaryMessenger> hostEnd_;
  ScreenServices services_;
  std::unique_ptr<ScreenProgram> program_;
  std::function<void()> willShutDown_;
};

}  // namespace zephyx
