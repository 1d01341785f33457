#include "Tests/Desktop/ChatServer.h"
#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {
namespace {

/// The AI actions of the whole program, with a server on this machine.
class ProgramTranslateTest : public ProgramTest {
 protected:
  static void SetUpTestSuite() {
    server_ = std::make_unique<ChatServer>(std::vector<std::string>{"Hola", " mundo"});
    desktop_ = std::make_unique<VirtualDesktop>();
    ZephyxProcess::useChatServer(*desktop_, server_->address());
    startProgram();
  }
  static void TearDownTestSuite() {
    ProgramTest::TearDownTestSuite();
    server_.reset();
  }

  static std::unique_ptr<ChatServer> server_;
};

std::unique_ptr<ChatServer> ProgramTranslateTest::server_;

TEST_F(ProgramTranslateTest, AnAnswerIsPastedOverTheSelectionItCameFrom) {
  desktop().copy("the user's own");
  ASSERT_TRUE(program().waitForEntry("the user's own"));
  const TargetProgram target(desktop(), TargetProgram::Kind::Qt, "hello world");
  ASSERT_TRUE(program().openTranslation());
  ASSERT_TRUE(waitFor([&] { return server_->answered() == 1; }));
  EXPECT_EQ(desktop().pasted(), "the user's own");
  ASSERT_TRUE(waitFor([&] {
    input().tap(key::Return);  // nothing until the answer is there
    return !program().translatePanel();
  }));
  EXPECT_TRUE(target.waitForText("Hola mundo")) << target.text();
  EXPECT_TRUE(target.isActive());
  desktop().copy("after");
  ASSERT_TRUE(program().waitForEntry("after"));
  for (const auto& entry : newEntries()) EXPECT_NE(entry.text, "hello world") << "was fetched only";
}

TEST_F(ProgramTranslateTest, EscapeEndsTheServersStreamAndGivesTheFocusBack) {
  server_->setHangs(true);
  const int requests = server_->requests();
  const TargetProgram target(desktop(), TargetProgram::Kind::Gtk, "hello world");
  target.copyAll();
  ASSERT_TRUE(program().waitForEntry("hello world"));
  ASSERT_TRUE(program().openTranslation());
  ASSERT_TRUE(waitFor([&] { return server_->requests() == requests + 1; }));
  ASSERT_TRUE(waitFor([&] {
    input().tap(key::Escape);
    return !program().translatePanel();
  }));
  EXPECT_TRUE(waitFor([&] { return server_->abandoned() == 1; }));
  EXPECT_TRUE(waitFor([&] { return target.isActive(); }));
  EXPECT_EQ(target.text(), "hello world");
}

}  // namespace
}  // namespace zephyx
