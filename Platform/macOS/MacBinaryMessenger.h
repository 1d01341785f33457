#pragma once

#import <FlutterMacOS/FlutterMacOS.h>

#include <memory>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// Bytes to and from one engine. The engine's messenger refers to its engine weakly, and what the
/// engine holds of this object ends with `cut`: neither keeps the other alive.
class MacBinaryMessenger final : public BinaryMessenger {
 public:
  explicit MacBinaryMessenger(id<FlutterBinaryMessenger> messenger);

  void send(const std::string& channel, Bytes message, BinaryReply reply) override;
  [[nodiscard]] Registration setMessageHandler(const std::string& channel,
                                               BinaryMessageHandler handler) override;

  /// Silences both directions, replies that are still awaited included.
  void cut() { wire_->isCut = true; }

 private:
  struct Wire {
    bool isCut = false;
  };

  static BinaryReply replyThrough(const std::shared_ptr<Wire>& wire, FlutterBinaryReply reply);

  id<FlutterBinaryMessenger> messenger_;
  std::shared_ptr<Wire> wire_ = std::make_shared<Wire>();
};

}  // namespace zephyx
