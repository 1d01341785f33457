#include "Tests/Desktop/ChatServer.h"
#include "Tests/Desktop/ClipboardProgram.h"
#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {
namespace {

using Kind = TargetProgram::Kind;

/// The AI actions of the whole program, with a server on this machine.
class ProgramTranslateTest : public ProgramTest {
 protected:
  static void SetUpTestSuite() {
    desktop_ = std::make_unique<VirtualDesktop>();
    desktop_->enter();
    server_ = std::make_unique<ChatServer>(std::vector<std::string>{"Hola", " mundo"});
    ZephyxProcess::useChatServer(*desktop_, server_->address());
    startProgram();
  }
  static void TearDownTestSuite() {
    ProgramTest::TearDownTestSuite();
    server_.reset();
  }

  /// Whether the hotkey asks the server about a text; leaves the panel.
  static bool asksAbout(const std::string& text) {
    const int before = server_->requests();
    const bool isAsked =
        program_->openTranslation() && waitFor([&] { return server_->requests() > before; });
    const bool isIt = server_->question().find(text) != std::string::npos;
    const auto leave = [] {
      desktop_->input().tap(key::Escape);  // once as a rule, or the program behind gets it
      return waitFor([] { return !program_->translatePanel(); }, std::chrono::seconds(1));
    };
    return waitFor(leave) && isAsked && isIt;
  }

  static std::unique_ptr<ChatServer> server_;
};

std::unique_ptr<ChatServer> ProgramTranslateTest::server_;

TEST_F(ProgramTranslateTest, AnAnswerIsPastedOverTheSelectionItCameFrom) {
  desktop().copy("the user's own");
  ASSERT_TRUE(program().waitForEntry("the user's own"));
  const TargetProgram target(desktop(), Kind::Qt, "hello world");
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

TEST_F(ProgramTranslateTest, TheSelectionOfEveryKindOfProgramIsFetchedAndTheClipboardIsAsItWas) {
  const auto file = desktop().home() / "a.txt";
  writeFile(file, "content");
  std::string picture(700'000, '\0');
  for (std::size_t i = 0; i < picture.size(); ++i) picture[i] = static_cast<char>(i * i / 7);
  const ClipboardProgram::Formats before{{"text/uri-list", "file://" + file.string() + "\r\n"},
                                         {"image/png", picture},
                                         {"text/html", "<b>bold</b>"},
                                         {"UTF8_STRING", "a.txt"}};
  ClipboardProgram owner;
  owner.copy(before);
  ASSERT_TRUE(waitForNewEntries(1));
  for (const auto kind : {Kind::Gtk, Kind::Qt, Kind::Terminal}) {
    SCOPED_TRACE(TargetProgram::name(kind));
    const bool isTerminal = kind == Kind::Terminal;
    const auto text = isTerminal ? "selected" : "text of " + TargetProgram::name(kind);
    const TargetProgram target(desktop(), kind, isTerminal ? "" : text);
    if (isTerminal) {
      input().type(text);
      ASSERT_TRUE(target.waitForText(text));
      const auto isSelected = [&] {
        for (int click = 0; click < 2; ++click)
          input().click(target.window().x + 30, target.window().y + 9);
        return waitFor([&] { return desktop().pasted("UTF8_STRING", "primary") == text; },
                       std::chrono::seconds(1));
      };
      ASSERT_TRUE(waitFor(isSelected));
    } else {
      input().chord({key::Control, key::A});
    }
    for (int round = 0; round < 2; ++round) {
      EXPECT_TRUE(asksAbout(text)) << server_->question();
      for (const auto& [name, data] : before) EXPECT_TRUE(desktop().pasted(name) == data) << name;
      EXPECT_TRUE(waitFor([&] { return target.isActive(); }));
    }
    if (isTerminal) {
      EXPECT_EQ(desktop().pasted("UTF8_STRING", "primary"), text);
    }
  }
  EXPECT_TRUE(holdsFor([&] { return newEntries().size() == 1; }, std::chrono::milliseconds(600)));
}

TEST_F(ProgramTranslateTest, ATerminalWithoutASelectionGivesWhatIsOnTheClipboard) {
  desktop().copy("on the clipboard");
  ASSERT_TRUE(program().waitForEntry("on the clipboard"));
  // The selection of another program is not the terminal's.
  desktop().run({"xclip", "-selection", "primary"}, "selected elsewhere");
  const TargetProgram terminal(desktop(), Kind::Terminal);
  EXPECT_TRUE(asksAbout("on the clipboard")) << server_->question();
  ASSERT_TRUE(waitFor([&] { return terminal.isActive(); }));
  input().type("alive");
  EXPECT_TRUE(terminal.waitForText("alive"));
  EXPECT_EQ(desktop().pasted("UTF8_STRING", "primary"), "selected elsewhere");
}

TEST_F(ProgramTranslateTest, ASlowProgramIsWaitedForAndAVerySlowOnesCopyIsTheUsers) {
  using namespace std::chrono_literals;
  desktop().copy("before");
  ASSERT_TRUE(program().waitForEntry("before"));
  {
    const TargetProgram slow(desktop(), "slow text", 200ms);
    EXPECT_TRUE(asksAbout("slow text")) << server_->question();
    EXPECT_EQ(desktop().pasted(), "before");
  }
  {
    const TargetProgram deaf(desktop(), "never copied", -1ms);
    EXPECT_TRUE(asksAbout("before")) << "what is on the clipboard, not " << server_->question();
    EXPECT_EQ(desktop().pasted(), "before");
  }
  EXPECT_EQ(newEntries().size(), 1u);
  const TargetProgram late(desktop(), "late text", 600ms);
  EXPECT_TRUE(asksAbout("before")) << server_->question();
  EXPECT_TRUE(program().waitForEntry("late text")) << "a copy like any other";
  EXPECT_EQ(desktop().pasted(), "late text");
}

TEST_F(ProgramTranslateTest, AnEmptyClipboardIsEmptyAgainAndAHungOneHoldsNothingUp) {
  const TargetProgram target(desktop(), Kind::Qt, "selected");
  {
    ClipboardProgram owner;
    owner.copyText("gone with its program");
    ASSERT_TRUE(program().waitForEntry("gone with its program"));
  }
  const auto isOwnerless = [&] { return windows().selectionOwner("CLIPBOARD") == 0; };
  ASSERT_TRUE(waitFor(isOwnerless));
  EXPECT_TRUE(asksAbout("selected")) << server_->question();
  EXPECT_TRUE(waitFor(isOwnerless));
  EXPECT_TRUE(holdsFor([&] { return isOwnerless() && newEntries().size() == 1; },
                       std::chrono::milliseconds(600)));

  ClipboardProgram hung;
  hung.setManners({.answersTargets = false});
  hung.copyText("never said");
  EXPECT_TRUE(asksAbout("selected")) << server_->question();
}

TEST_F(ProgramTranslateTest, EscapeEndsTheServersStreamAndGivesTheFocusBack) {
  server_->setHangs(true);
  const int requests = server_->requests();
  const TargetProgram target(desktop(), Kind::Gtk, "hello world");
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
