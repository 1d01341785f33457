#include "Tests/Desktop/ChatServer.h"
#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {
namespace {

/// The AI actions of the whole program, with a server on this machine.
class ProgramTranslateTest : public testing::Test {
 protected:
  void SetUp() override {
    ZephyxProcess::useChatServer(desktop_, server_.address());
    program_.emplace(desktop_);
    ASSERT_TRUE(program_->waitUntilReady());
  }
  void TearDown() override {
    if (HasFailure()) ADD_FAILURE() << "The program's log:\n" << program_->log();
  }
  bool panelHasKeyboard() {
    const auto panel = program_->translatePanel();
    return panel && desktop_.windows().focused() == panel->id;
  }
  void translateSelection() {
    desktop_.input().chord({key::Control, key::Alt, key::Super, key::T});
    ASSERT_TRUE(waitFor([&] { return panelHasKeyboard(); }));
  }

  ChatServer server_{{"Hola", " mundo"}};
  VirtualDesktop desktop_;
  std::optional<ZephyxProcess> program_;
};

TEST_F(ProgramTranslateTest, AnAnswerIsPastedOverTheSelectionItCameFrom) {
  desktop_.copy("the user's own");
  ASSERT_TRUE(program_->waitForEntry("the user's own"));
  const TargetProgram target(desktop_, TargetProgram::Kind::Qt, "hello world");
  translateSelection();
  ASSERT_TRUE(waitFor([&] { return server_.answered() == 1; }));
  ASSERT_TRUE(waitFor([&] {
    desktop_.input().tap(key::Return);  // nothing until the answer is there
    return !program_->translatePanel();
  }));
  EXPECT_TRUE(target.waitForText("Hola mundo")) << target.text();
  EXPECT_TRUE(target.isActive());
}

TEST_F(ProgramTranslateTest, EscapeEndsTheServersStreamAndGivesTheFocusBack) {
  server_.setHangs(true);
  const TargetProgram target(desktop_, TargetProgram::Kind::Gtk, "hello world");
  target.copyAll();
  ASSERT_TRUE(program_->waitForEntry("hello world"));
  translateSelection();
  ASSERT_TRUE(waitFor([&] { return server_.requests() == 1; }));
  ASSERT_TRUE(waitFor([&] {
    desktop_.input().tap(key::Escape);
    return !program_->translatePanel();
  }));
  EXPECT_TRUE(waitFor([&] { return server_.abandoned() == 1; }));
  EXPECT_TRUE(waitFor([&] { return target.isActive(); }));
  EXPECT_EQ(target.text(), "hello world");
}

}  // namespace
}  // namespace zephyx
