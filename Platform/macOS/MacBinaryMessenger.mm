#import "Platform/macOS/MacBinaryMessenger.h"

#include <utility>

#import "Platform/macOS/Strings.h"

namespace zephyx {
namespace {

BytesView viewOf(NSData* data) {
  return {static_cast<const std::uint8_t*>(data.bytes), static_cast<std::size_t>(data.length)};
}

/// The same memory, without a copy; nil for no bytes.
NSData* dataTakingOver(Bytes message) {
  if (message.empty()) return nil;
  auto owner = std::make_shared<Bytes>(std::move(message));
  return [[NSData alloc] initWithBytesNoCopy:owner->data()
                                      length:owner->size()
                                 deallocator:^(void*, NSUInteger) {
                                   // The block is the owner.
                                   (void)owner;
                                 }];
}

}  // namespace

MacBinaryMessenger::MacBinaryMessenger(id<FlutterBinaryMessenger> messenger)
    : messenger_(messenger) {}

void MacBinaryMessenger::send(const std::string& channel, Bytes message, BinaryReply reply) {
  if (wire_->isCut) return;
  @autoreleasepool {
    NSString* name = nsString(channel);
    NSData* data = dataTakingOver(std::move(message));
    if (!reply) {
      [messenger_ sendOnChannel:name message:data];
      return;
    }
    const auto wire = wire_;
    const auto answer = std::make_shared<BinaryReply>(std::move(reply));
    [messenger_ sendOnChannel:name
                      message:data
                  binaryReply:^(NSData* answerData) {
                    const auto once = std::exchange(*answer, nullptr);
                    if (!once || wire->isCut) return;
                    @autoreleasepool {
                      once(viewOf(answerData));
                    }
                  }];
  }
}

BinaryReply MacBinaryMessenger::replyThrough(const std::shared_ptr<Wire>& wire,
                                             FlutterBinaryReply reply) {
  struct Pending {
    FlutterBinaryReply reply;
  };
  // The engine's block keeps the engine alive, so it goes with the first answer.
  const auto pending = std::make_shared<Pending>(Pending{reply});
  return [=](BytesView answer) {
    FlutterBinaryReply once = std::exchange(pending->reply, nil);
    if (!once || wire->isCut) return;
    // The engine tells "nobody handled it" by nil, not by emptiness.
    once(answer.empty() ? nil : nsData(answer));
  };
}

Registration MacBinaryMessenger::setMessageHandler(const std::string& channel,
                                                   BinaryMessageHandler handler) {
  if (wire_->isCut) return {};
  const auto wire = wire_;
  const auto shared = std::make_shared<BinaryMessageHandler>(std::move(handler));
  const FlutterBinaryMessengerConnection connection =
      [messenger_ setMessageHandlerOnChannel:nsString(channel)
                        binaryMessageHandler:^(NSData* message, FlutterBinaryReply reply) {
                          if (wire->isCut) return;
                          // Outlives the block, which ends when the handler takes itself off.
                          const auto current = shared;
                          @autoreleasepool {
                            (*current)(viewOf(message), replyThrough(wire, reply));
                          }
                        }];
  // A connection that a newer handler has replaced is unknown to the engine: nothing ends then.
  id<FlutterBinaryMessenger> messenger = messenger_;
  return Registration([=] { [messenger cleanUpConnection:connection]; });
}

}  // namespace zephyx
