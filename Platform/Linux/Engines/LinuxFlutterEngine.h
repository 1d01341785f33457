#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Platform/FlutterEngine.h"

namespace zephyx {

class Dispatch;
class Directories;
class LinuxBinaryMessenger;
class ScreenProgram;
class UserDefaults;

/// Runs one screen program behind a pair of messengers.
class LinuxFlutterEngine final : public FlutterEngine {
 public:
  LinuxFlutterEngine(std::string name, Dispatch& dispatch, UserDefaults& userDefaults,
                     Directories& directories);
  ~LinuxFlutterEngine() override;

  bool run(const std::string& entryPoint) override;
  std::shared_ptr<BinaryMessenger> binaryMessenger() const override;
  void shutDown() override;

  /// Null before `run` and after `shutDown`.
  ScreenProgram* program() const { return program_.get(); }
  /// Called before the program goes, so that its picture can go first.
  void setWillShutDown(std::function<void()> handler) { willShutDown_ = std::move(handler); }

 private:
  const std::string name_;
  UserDefaults& userDefaults_;
  Directories& directories_;
  std::shared_ptr<LinuxBinaryMessenger> hostEnd_;
  std::shared_ptr<LinuxBinaryMessenger> screenEnd_;
  std::unique_ptr<ScreenProgram> program_;
  std::function<void()> willShutDown_;
};

}  // namespace zephyx
