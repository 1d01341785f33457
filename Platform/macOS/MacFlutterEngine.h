#pragma once

#import <FlutterMacOS/FlutterMacOS.h>

#include <memory>

#include "Platform/FlutterEngine.h"

namespace zephyx {

class MacBinaryMessenger;

class MacFlutterEngine final : public FlutterEngine {
 public:
  explicit MacFlutterEngine(::FlutterEngine* engine);
  ~MacFlutterEngine() override;

  bool run(const std::string& entryPoint) override;
  std::shared_ptr<BinaryMessenger> binaryMessenger() const override;
  void shutDown() override;

  ::FlutterEngine* engine() const { return engine_; }

 private:
  ::FlutterEngine* engine_;
  std::shared_ptr<MacBinaryMessenger> messenger_;
};

}  // namespace zephyx
