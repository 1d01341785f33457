#include "Channel/MethodChannel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Tests/Channel/Bytes.h"

namespace zephyx {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const Bytes callOfPing = hex("07 04 70696e67 07 06 736563726574");  // ping("secret")
const Bytes notImplemented;
const Bytes malformedCallAnswer =
    joined(hex("01 07 09 6d616c666f726d6564"), hex("07 0e 6d616c666f726d65642063616c6c 00"));

/// The other side of the one channel: records what is sent, and delivers what the test sends.
class FakeMessenger : public BinaryMessenger, public std::enable_shared_from_this<FakeMessenger> {
 public:
  struct Sent {
    std::string channel;
    Bytes message;
    BinaryReply reply;
  };

  void send(const std::string& channel, Bytes message, BinaryReply reply) override {
    sent.push_back({channel, std::move(message), std::move(reply)});
  }
  Registration setMessageHandler(const std::string& channel,
                                 BinaryMessageHandler handler) override {
    EXPECT_EQ(channel, "app/menu");
    handler_ = std::make_shared<BinaryMessageHandler>(std::move(handler));
    return Registration([self = weak_from_this(), mine = handler_.get()] {
      const auto messenger = self.lock();
      if (messenger && messenger->handler_.get() == mine) messenger->handler_.reset();
    });
  }
  /// Its answers so far can be seen in `answers`.
  void deliver(const Bytes& message) {
    if (!handler_) return answers.push_back({});
    const auto handler = handler_;
    (*handler)(message, [self = weak_from_this()](BytesView answer) {
      if (const auto messenger = self.lock()) {
        messenger->answers.emplace_back(answer.begin(), answer.end());
      }
    });
  }

  std::vector<Sent> sent;
  std::vector<Bytes> answers;

 private:
  std::shared_ptr<BinaryMessageHandler> handler_;
};

class MethodChannelTest : public testing::Test {
 protected:
  std::unique_ptr<MethodChannel> makeChannel() {
    return std::make_unique<MethodChannel>(
        messenger_, "app/menu", [this](std::string_view line) { lines_.emplace_back(line); });
  }

  std::shared_ptr<FakeMessenger> messenger_ = std::make_shared<FakeMessenger>();
  std::vector<std::string> lines_;
  std::unique_ptr<MethodChannel> channel_ = makeChannel();
};

TEST_F(MethodChannelTest, sendsACallAsBytes) {
  channel_->invokeMethod("ping");
  channel_->invokeMethod("ping", 7);
  ASSERT_EQ(messenger_->sent.size(), 2U);
  EXPECT_EQ(messenger_->sent[0].channel, "app/menu");
  EXPECT_EQ(messenger_->sent[0].message, hex("07 04 70696e67 00"));
  EXPECT_EQ(messenger_->sent[1].message, hex("07 04 70696e67 03 07000000"));
  EXPECT_FALSE(messenger_->sent[0].reply) << "no answer is awaited";
}

TEST_F(MethodChannelTest, readsEveryKindOfReply) {
  const std::pair<Bytes, MethodReply> cases[] = {
      {hex("00 01"), Value(true)},
      {hex("01 07 01 65 07 01 6d 03 01000000"), MethodError{"e", "m", 1}},
      {hex("01 07 01 65 00 00"), MethodError{"e", "", {}}},
      {{}, NotImplemented{}},
      {hex("00"), MethodError{"malformed", "malformed reply", {}}},
      {hex("02 00"), MethodError{"malformed", "malformed reply", {}}},
      {hex("00 00 00"), MethodError{"malformed", "malformed reply", {}}},
      {hex("01 00 00 00"), MethodError{"malformed", "malformed reply", {}}},
      {hex("01 07 01 65 01 00"), MethodError{"malformed", "malformed reply", {}}},
  };
  for (const auto& [bytes, expected] : cases) {
    std::vector<MethodReply> replies;
    channel_->invokeMethod("ping", {},
                           [&](MethodReply reply) { replies.push_back(std::move(reply)); });
    messenger_->sent.back().reply(bytes);
    EXPECT_THAT(replies, ElementsAre(expected)) << testing::PrintToString(bytes);
  }
  EXPECT_THAT(lines_, testing::SizeIs(5));
  EXPECT_THAT(lines_, testing::Each(AllOf(HasSubstr("app/menu"), HasSubstr("ping"))));
}

TEST_F(MethodChannelTest, answersACallAsBytes) {
  std::vector<MethodCall> calls;
  const std::pair<std::function<void(MethodResult&)>, Bytes> cases[] = {
      {[](MethodResult& result) { result.success(); }, hex("00 00")},
      {[](MethodResult& result) { result.success(List{1}); }, hex("00 0c 01 03 01000000")},
      {[](MethodResult& result) { result.error("e", "m", true); }, hex("01 07 01 65 07 01 6d 01")},
      {[](MethodResult& result) { result.notImplemented(); }, notImplemented},
  };
  for (const auto& [answer, expected] : cases) {
    channel_->setMethodCallHandler(
        [&, &answer = answer](const MethodCall& call, MethodResult result) {
          calls.push_back(call);
          answer(result);
        });
    messenger_->answers.clear();
    messenger_->deliver(callOfPing);
    EXPECT_THAT(messenger_->answers, ElementsAre(expected));
    EXPECT_EQ(calls.back(), (MethodCall{"ping", "secret"}));
  }
  EXPECT_THAT(lines_, IsEmpty());
}

TEST_F(MethodChannelTest, aDroppedResultAnswersNotImplementedAndNamesTheMethodOnly) {
  channel_->setMethodCallHandler([](const MethodCall&, MethodResult) {});
  messenger_->deliver(callOfPing);
  EXPECT_THAT(messenger_->answers, ElementsAre(notImplemented));
  EXPECT_THAT(lines_, ElementsAre(AllOf(HasSubstr("app/menu"), HasSubstr("ping"),
                                        testing::Not(HasSubstr("secret")))));
}

TEST_F(MethodChannelTest, aReplacedResultCountsAsDropped) {
  std::vector<MethodResult> kept;
  channel_->setMethodCallHandler([&](const MethodCall&, MethodResult result) {
    if (kept.empty()) {
      kept.push_back(std::move(result));
    } else {
      kept[0] = std::move(result);
    }
  });
  messenger_->deliver(callOfPing);
  messenger_->deliver(callOfPing);
  EXPECT_THAT(messenger_->answers, ElementsAre(notImplemented));
  kept[0].success();
  EXPECT_THAT(messenger_->answers, ElementsAre(notImplemented, hex("00 00")));
  EXPECT_EQ(lines_.size(), 1U);
}

TEST_F(MethodChannelTest, aSecondAnswerIsAnAssertionAndIgnoredInRelease) {
  const auto answerTwice = [this] {
    channel_->setMethodCallHandler([](const MethodCall&, MethodResult result) {
      result.success(1);
      result.notImplemented();
    });
    messenger_->deliver(callOfPing);
  };
#ifdef NDEBUG
  answerTwice();
  EXPECT_THAT(messenger_->answers, ElementsAre(hex("00 03 01000000")));
#else
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(answerTwice(), "answered twice");
#endif
}

TEST_F(MethodChannelTest, malformedCallsAreAnsweredWithAnErrorBeforeTheHandler) {
  channel_->setMethodCallHandler(
      [](const MethodCall&, MethodResult) { ADD_FAILURE() << "the handler was called"; });
  for (const char* message : {"", "07 04 70696e67", "03 01000000 00", "00 00", "07 01 61 00 00"}) {
    messenger_->answers.clear();
    messenger_->deliver(hex(message));
    EXPECT_THAT(messenger_->answers, ElementsAre(malformedCallAnswer)) << message;
  }
  EXPECT_THAT(lines_, testing::Each(HasSubstr("app/menu")));
  EXPECT_EQ(lines_.size(), 5U);
}

TEST_F(MethodChannelTest, aChannelWithoutAHandlerLeavesMessagesUnhandled) {
  channel_->setMethodCallHandler([](const MethodCall&, MethodResult result) { result.success(); });
  channel_->setMethodCallHandler({});
  messenger_->deliver(callOfPing);
  channel_->setMethodCallHandler([](const MethodCall&, MethodResult result) { result.success(); });
  channel_.reset();
  messenger_->deliver(callOfPing);
  EXPECT_THAT(messenger_->answers, ElementsAre(notImplemented, notImplemented));
}

TEST_F(MethodChannelTest, droppingAnOlderChannelOfTheNameKeepsTheNewerOnesHandler) {
  channel_->setMethodCallHandler([](const MethodCall&, MethodResult result) { result.success(1); });
  const auto newer = makeChannel();
  newer->setMethodCallHandler([](const MethodCall&, MethodResult result) { result.success(true); });
  channel_.reset();
  messenger_->deliver(callOfPing);
  EXPECT_THAT(messenger_->answers, ElementsAre(hex("00 01")));
}

TEST_F(MethodChannelTest, aHandlerMayEndItsChannelAndAnswerAfterwards) {
  const auto alive = std::make_shared<int>(5);
  channel_->setMethodCallHandler([this, alive](const MethodCall& call, MethodResult result) {
    channel_.reset();
    result.success(List{call.method.text(), *alive});
  });
  messenger_->deliver(callOfPing);
  EXPECT_THAT(messenger_->answers, ElementsAre(hex("00 0c 02 07 04 70696e67 03 05000000")));
}

TEST_F(MethodChannelTest, nothingHappensOnceTheMessengerIsGone) {
  std::vector<MethodResult> kept;
  channel_->setMethodCallHandler(
      [&](const MethodCall&, MethodResult result) { kept.push_back(std::move(result)); });
  messenger_->deliver(callOfPing);
  messenger_.reset();
  kept[0].success();
  channel_->invokeMethod("ping", {}, [](const MethodReply&) { ADD_FAILURE() << "a reply"; });
  channel_->setMethodCallHandler([](const MethodCall&, MethodResult) {});
  channel_.reset();
  EXPECT_THAT(lines_, IsEmpty());
}

}  // namespace
}  // namespace zephyx
