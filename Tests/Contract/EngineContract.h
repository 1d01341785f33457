#pragma once

#include "Platform/FlutterEngine.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

/// Engines and the bytes that go to and from them.
class EngineContract : public ContractTest {
 protected:
  static constexpr const char* entryPoint = "contractMain";

  EngineContract() {
    engine_ = platform().flutterEngines().makeEngine("contract_engine");
    runs_ = engine_->run(entryPoint);
    host_ = engine_->binaryMessenger();
    screen_ = desktop().screenMessenger(entryPoint);
  }
  ~EngineContract() override {
    if (engine_) engine_->shutDown();
  }

  static Bytes bytes(const std::string& text) { return {text.begin(), text.end()}; }
  static std::string text(BytesView view) { return {view.begin(), view.end()}; }

  /// Answers every message with "re: " and the message.
  Registration answer(BinaryMessenger& messenger, const std::string& channel) {
    return messenger.setMessageHandler(channel, [this](BytesView message, BinaryReply reply) {
      received_ += text(message) + " ";
      reply(bytes("re: " + text(message)));
    });
  }

  std::shared_ptr<FlutterEngine> engine_;
  bool runs_ = false;
  std::shared_ptr<BinaryMessenger> host_;
  std::shared_ptr<BinaryMessenger> screen_;
  std::string received_;
};

TEST_P(EngineContract, MessagesArriveInOrderLaterAndAreAnswered) {
  ASSERT_TRUE(runs_);
  ASSERT_TRUE(screen_);
  for (auto* const receiver : {host_.get(), screen_.get()}) {
    auto& sender = receiver == host_.get() ? *screen_ : *host_;
    received_.clear();
    std::string replies;
    const auto handler = answer(*receiver, "contract/echo");
    for (const char* message : {"one", "two", "three"}) {
      sender.send("contract/echo", bytes(message),
                  [&](BytesView reply) { replies += text(reply) + " "; });
    }
    EXPECT_EQ(received_, "") << "delivered inside send";
    EXPECT_TRUE(becomesTrue([&] { return replies.size() >= 24; }));
    EXPECT_EQ(received_, "one two three ");
    EXPECT_EQ(replies, "re: one re: two re: three ");
  }
}

TEST_P(EngineContract, NobodyThereIsAnEmptyReply) {
  bool answered = false;
  std::size_t length = 1;
  screen_->send("contract/nobody", bytes("hello"), [&](BytesView reply) {
    answered = true;
    length = reply.size();
  });
  EXPECT_TRUE(becomesTrue([&] { return answered; }));
  EXPECT_EQ(length, 0u);
}

TEST_P(EngineContract, ANewerHandlerReplacesTheOlderWhoseRegistrationThenEndsNothing) {
  std::string who;
  auto older = host_->setMessageHandler("contract/who", [&](BytesView, BinaryReply reply) {
    who += "older ";
    reply({});
  });
  auto newer = host_->setMessageHandler("contract/who", [&](BytesView, BinaryReply reply) {
    who += "newer ";
    reply({});
  });
  older.reset();
  screen_->send("contract/who", {}, nullptr);
  EXPECT_TRUE(becomesTrue([&] { return !who.empty(); }));
  EXPECT_EQ(who, "newer ");
  newer.reset();
  screen_->send("contract/who", {}, nullptr);
  desktop().pass(0.1);
  EXPECT_EQ(who, "newer ");
}

TEST_P(EngineContract, AReplyMayComeLaterAndAHandlerMayTakeItselfOff) {
  BinaryReply late;
  Registration handler;
  handler = host_->setMessageHandler("contract/late", [&](BytesView, BinaryReply reply) {
    late = std::move(reply);
    handler.reset();
  });
  std::string replied;
  screen_->send("contract/late", bytes("?"), [&](BytesView reply) { replied = text(reply); });
  ASSERT_TRUE(becomesTrue([&] { return late != nullptr; }));
  EXPECT_EQ(replied, "");
  late(bytes("finally"));
  EXPECT_TRUE(becomesTrue([&] { return replied == "finally"; }));
}

TEST_P(EngineContract, AfterShutDownEverythingIsSilentAndHarmless) {
  BinaryReply pending;
  int deliveries = 0;
  int replies = 0;
  auto handler = host_->setMessageHandler("contract/end", [&](BytesView, BinaryReply reply) {
    ++deliveries;
    pending = std::move(reply);
  });
  screen_->send("contract/end", bytes("first"), [&](BytesView) { ++replies; });
  ASSERT_TRUE(becomesTrue([&] { return pending != nullptr; }));
  screen_->send("contract/end", bytes("under way"), [&](BytesView) { ++replies; });
  handler.reset();
  engine_->shutDown();
  pending(bytes("too late"));
  host_->send("contract/end", bytes("into the void"), [&](BytesView) { ++replies; });
  engine_.reset();
  host_->send("contract/end", bytes("still nothing"), nullptr);
  desktop().pass(0.2);
  EXPECT_EQ(deliveries, 1);
  EXPECT_EQ(replies, 0);
}

TEST_P(EngineContract, AMissingEntryPointDoesNotRun) {
  EXPECT_FALSE(platform().flutterEngines().makeEngine("other")->run("noSuchEntryPoint"));
}

}  // namespace zephyx
