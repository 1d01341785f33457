#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

class DispatchQueue;

/// One end of the wire between the host and a screen program. What is sent at one end is handled at
/// the other by the main loop, in order; the bytes are moved, not copied.
class LinuxBinaryMessenger final : public BinaryMessenger,
                                   public std::enable_shared_from_this<LinuxBinaryMessenger> {
  struct Wire {
    DispatchQueue& queue;
    bool isCut = false;
  };

 public:
  using Pair =
      std::pair<std::shared_ptr<LinuxBinaryMessenger>, std::shared_ptr<LinuxBinaryMessenger>>;

  /// Two connected ends, delivering on `mainQueue`.
  static Pair makePair(DispatchQueue& mainQueue);

  explicit LinuxBinaryMessenger(std::shared_ptr<Wire> wire) : wire_(std::move(wire)) {}

  void send(const std::string& channel, Bytes message, BinaryReply reply) override;
  [[nodiscard]] Registration setMessageHandler(const std::string& channel,
                                               BinaryMessageHandler handler) override;

  /// Silences both ends; what is on its way is dropped.
  void cut() { wire_->isCut = true; }

 private:
  using Handler = std::shared_ptr<BinaryMessageHandler>;

  void receive(const std::string& channel, BytesView message, BinaryReply reply);
  static BinaryReply replyThrough(const std::shared_ptr<Wire>& wire, BinaryReply reply);

  std::shared_ptr<Wire> wire_;
  std::weak_ptr<LinuxBinaryMessenger> peer_;
  std::unordered_map<std::string, Handler> handlers_;
};

}  // namespace zephyx
