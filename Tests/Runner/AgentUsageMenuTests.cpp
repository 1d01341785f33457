
#include "Platform/Label.h"
#include "Platform/PushButton.h"
#include "Runner/AgentUsageMenuView.h"
#include "Runner/UsageMiniRingView.h"
#include "Tests/Runner/FakeUsageProvider.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

using Disclosure = AgentRowView::Disclosure;

constexpr const char* authorizedKey = "agentUsage.authorized.v2";
constexpr const char* expandedKey = "agentUsage.expanded.v1";
constexpr const char* sessionKey = "agentUsage.session.v1";
constexpr const char* visibleKey = "agentUsage.visible.claude-code";
constexpr double closedHeight = 26 + 56 + 36 + 2 * 48 + 4;

class AgentUsageMenuTest : public HostTest {
 protected:
  AgentUsageMenuTest() { usageProvider = provider; }

  AgentUsageMenuView& view() {
    return dynamic_cast<AgentUsageMenuView&>(*statusItem().menu()->items().at(1)->view());
  }
  void clickRow() { view().agentRow().clicked({100, 28}); }
  /// The menu is open, and the account is connected with figures.
  void connect(const AgentUsage& usage = usageWith(1, 2), bool expanded = false) {
    desktop.userDefaults.setBoolean(authorizedKey, true);
    desktop.userDefaults.setBoolean(expandedKey, expanded);
    launch();
    reopenMenu();
    provider->answer(usage);
  }
  /// What the user sees of the account.
  std::string shown() {
    auto& row = view().agentRow();
    if (row.isHidden()) return "nothing";
    std::string text = row.ring().percentLabel().text() + " | " + row.subtitleLabel().text();
    if (row.disclosure() != Disclosure::none) {
      text += row.disclosure() == Disclosure::open ? " | ^" : " | v";
    }
    if (!view().accordion().isHidden()) text += " | accordion";
    if (!view().creditsButton().isHidden()) text += " | " + view().creditsButton().title();
    if (!view().disconnectButton().isHidden()) text += " | " + view().disconnectButton().title();
    return text;
  }
  std::vector<Value> takeTelemetry() {
    desktop.dispatch.settle();
    std::vector<Value> events;
    for (const auto& call : mainScreen().takeCalls()) {
      if (call.method == "telemetryEvent") events.push_back(call.arguments);
    }
    return events;
  }
  static Value rowClicked(const char* agent, const char* expanded = nullptr) {
    Map properties{{"agent", agent}};
    if (expanded) properties.append("expanded", expanded);
    return Map{{"name", "agent_row_clicked"}, {"props", properties}};
  }

  const std::shared_ptr<FakeUsageProvider> provider = std::make_shared<FakeUsageProvider>();
};

constexpr const char* notConnected = "— | Not connected | See Claude Credits";
constexpr const char* connectedClosed = "42% | Session 42% | v | Disconnect account";
constexpr const char* connectedOpen = "42% | Session 42% | ^ | accordion | Disconnect account";
constexpr const char* needsReconnect = "42% | Session 42% | Reconnect Claude";

AgentUsage plainUsage() {
  return {0.42, std::nullopt, 0.3, std::nullopt, {}, {}};
}

TEST_F(AgentUsageMenuTest, EachResultLeadsToTheStateThatItMeans) {
  const std::tuple<const char*, UsageFetchResult, const char*, bool, bool, std::optional<double>>
      cases[] = {
          {"success", plainUsage(), connectedOpen, true, true, 0.42},
          {"no credentials", CredentialsUnavailable{}, notConnected, false, false, std::nullopt},
          {"reauthorization", ReauthorizationRequired{}, needsReconnect, true, false, 0.42},
          {"transient", TransientFailure{}, connectedOpen, true, true, 0.42},
      };
  for (const auto& [name, result, expected, authorized, expanded, session] : cases) {
    SCOPED_TRACE(name);
    connect(plainUsage(), true);
    EXPECT_EQ(shown(), connectedOpen);
    EXPECT_EQ(view().frame().size.height, closedHeight + 50);
    reopenMenu();
    EXPECT_FALSE(provider->requests.back().interactive);
    provider->answer(result);
    EXPECT_EQ(shown(), expected);
    EXPECT_EQ(desktop.userDefaults.boolean(authorizedKey), authorized);
    EXPECT_EQ(desktop.userDefaults.boolean(expandedKey), expanded);
    EXPECT_EQ(desktop.userDefaults.number(sessionKey), session);
    EXPECT_EQ(view().frame().size.height, closedHeight + (expanded ? 50 : 0));
    EXPECT_TRUE(statusItem().menuIsOpen());
    EXPECT_EQ(view().agentRow().accessibilityLabel(), "Claude Code");
    EXPECT_EQ(view().agentRow().accessibilityValue(), view().agentRow().subtitleLabel().text());
    endHost();
  }
}

TEST_F(AgentUsageMenuTest, SaysThatWithoutASecretStoreTheConnectionIsForgotten) {
  const auto subtitle = [this] { return view().agentRow().subtitleLabel().text(); };
  desktop.keychain.setAvailable(false);
  launch();
  EXPECT_EQ(subtitle(), "Not connected") << "nobody has looked";
  reopenMenu();
  EXPECT_EQ(subtitle(), "Not connected · no secret store");
  EXPECT_NE(view().agentRow().toolTip(), "");
  endHost();
  connect(plainUsage());
  EXPECT_EQ(subtitle(), "Session 42%") << "the figures come first";
  reopenMenu();
  provider->answer(ReauthorizationRequired{});
  EXPECT_EQ(subtitle(), "No secret store: connect again");
  desktop.keychain.setAvailable(true);
  reopenMenu();
  EXPECT_EQ(subtitle(), "Session 42%");
  EXPECT_EQ(view().agentRow().toolTip(), "");
}

TEST_F(AgentUsageMenuTest, ConnectsOnlyWithTheUsersConsent) {
  const auto answerQuestion = [this](std::size_t button) {
    view().creditsButton().click();
    desktop.dispatch.settle();
    desktop.alerts.press(button);
  };
  launch();
  reopenMenu();
  view().creditsButton().click();
  EXPECT_FALSE(statusItem().menuIsOpen()) << "it would stand in the question's way";
  answerQuestion(1);
  EXPECT_FALSE(desktop.alerts.shown()) << "two clicks ask once";
  EXPECT_EQ(shown(), notConnected);
  EXPECT_THAT(provider->requests, IsEmpty());

  for (const UsageFetchResult& failure :
       {UsageFetchResult(TransientFailure{}), UsageFetchResult(CredentialsUnavailable{})}) {
    answerQuestion(0);
    provider->answer(failure);
    EXPECT_EQ(shown(), notConnected);
    EXPECT_TRUE(view().creditsButton().isEnabled());
  }
  answerQuestion(0);
  ASSERT_EQ(provider->requests.size(), 3u);
  EXPECT_TRUE(provider->requests.back().interactive);
  EXPECT_FALSE(view().creditsButton().isEnabled());
  reopenMenu();
  EXPECT_EQ(provider->requests.size(), 3u);
  provider->answer(plainUsage());
  EXPECT_EQ(shown(), connectedClosed);
  EXPECT_EQ(desktop.userDefaults.boolean(authorizedKey), true);
  EXPECT_FALSE(desktop.userDefaults.boolean(expandedKey).value_or(false));
}

TEST_F(AgentUsageMenuTest, ReconnectsWithoutAskingAgain) {
  connect(plainUsage());
  reopenMenu();
  provider->answer(ReauthorizationRequired{});
  clickRow();
  EXPECT_EQ(shown(), needsReconnect);
  EXPECT_EQ(desktop.userDefaults.boolean(expandedKey), false);
  view().creditsButton().click();
  EXPECT_FALSE(desktop.alerts.shown());
  EXPECT_TRUE(provider->requests.back().interactive);
  provider->answer(plainUsage());
  EXPECT_EQ(shown(), connectedClosed);
}

TEST_F(AgentUsageMenuTest, DisconnectingForgetsEverythingAndAnswersOfBeforeDoNotCount) {
  connect(usageWith(2, 3), true);
  reopenMenu();
  reopenMenu();
  EXPECT_EQ(provider->requests.size(), 2u) << "one at a time";
  view().disconnectButton().click();
  provider->answer(plainUsage());
  EXPECT_EQ(provider->invalidations, 1);
  EXPECT_EQ(shown(), notConnected);
  EXPECT_EQ(view().agentRow().ring().progress(), 0);
  EXPECT_EQ(desktop.userDefaults.boolean(authorizedKey), false);
  EXPECT_EQ(desktop.userDefaults.boolean(expandedKey), false);
  EXPECT_FALSE(desktop.userDefaults.number(sessionKey));
  EXPECT_EQ(view().frame().size.height, closedHeight);

  endHost();
  connect(plainUsage());
  provider->requests.clear();
  reopenMenu();
  provider->answer(ReauthorizationRequired{});
  reopenMenu();
  view().creditsButton().click();
  provider->answer(plainUsage());
  EXPECT_EQ(shown(), connectedClosed);
  provider->requests.at(1).completion(ReauthorizationRequired{});
  EXPECT_EQ(shown(), connectedClosed);

  endHost();
  provider->requests.at(2).completion(plainUsage());
}

TEST_F(AgentUsageMenuTest, ClicksAreCountedAndFlipTheAccordionOfAConnectedAccount) {
  launch();
  reopenMenu();
  takeTelemetry();
  clickRow();
  for (const auto& row : view().placeholderRows()) row->clicked({100, 20});
  EXPECT_THAT(takeTelemetry(),
              ElementsAre(rowClicked("claude-code"), rowClicked("gemini"), rowClicked("openai")));
  EXPECT_TRUE(statusItem().menuIsOpen());
  endHost();

  connect(plainUsage());
  takeTelemetry();
  clickRow();
  EXPECT_EQ(desktop.userDefaults.boolean(expandedKey), true);
  desktop.dispatch.advance(0.2);
  clickRow();
  EXPECT_EQ(desktop.userDefaults.boolean(expandedKey), false);
  EXPECT_THAT(takeTelemetry(),
              ElementsAre(rowClicked("claude-code", "true"), rowClicked("claude-code", "false")));
}

TEST_F(AgentUsageMenuTest, AFlipClosesTheMenuAndOpensItOnceWithItsNewHeight) {
  connect(plainUsage());
  clickRow();
  EXPECT_FALSE(statusItem().menuIsOpen());
  desktop.dispatch.advance(0.14);
  EXPECT_FALSE(statusItem().menuIsOpen());
  desktop.dispatch.advance(0.02);
  EXPECT_TRUE(statusItem().menuIsOpen());
  EXPECT_EQ(shown(), connectedOpen);

  // What arrives while it is open changes its height and nothing else.
  provider->answer(usageWith(2, 2));
  EXPECT_EQ(view().frame().size.height, closedHeight + 50 + 4 * 18);
  EXPECT_TRUE(statusItem().menuIsOpen());

  // The user closes it, or opens it first, and it stays.
  clickRow();
  desktop.dispatch.advance(0.1);
  reopenMenu();
  statusItem().cancelTrackingWithoutAnimation();
  desktop.dispatch.advance(1);
  EXPECT_FALSE(statusItem().menuIsOpen());
}

TEST_F(AgentUsageMenuTest, TheAccordionShowsThreeLimitsAndFourModelsAtMost) {
  for (const auto& [limits, models, height] : {std::tuple{0u, 0u, 50.0},
                                               {1u, 0u, 68.0},
                                               {0u, 2u, 86.0},
                                               {3u, 4u, 176.0},
                                               {4u, 5u, 176.0}}) {
    connect(usageWith(limits, models), true);
    EXPECT_EQ(view().accordion().frame().size.height, height);
    EXPECT_EQ(view().frame().size.height, closedHeight + height);
    endHost();
  }
  connect(usageWith(4, 5), true);
  const auto& accordion = view().accordion();
  EXPECT_THAT(accordion.weeklyLabel().text(), StartsWith("Week 31% · resets "));
  EXPECT_EQ(accordion.scopedLabels().back()->text(), "Haiku: 38% used this week");
  EXPECT_EQ(accordion.modelRows().front().name->text(), "Opus 4.1");
  EXPECT_EQ(accordion.modelRows().front().counts->text(), "11.6M in · 350.0K out");
  EXPECT_EQ(accordion.modelRows().back().name->text(), "Sonnet 4");
  // Lines hang from the top, in order, within the accordion.
  std::vector<const View*> lines{&accordion.weeklyLabel()};
  for (const auto& label : accordion.scopedLabels()) lines.push_back(label.get());
  for (const auto& row : accordion.modelRows()) lines.push_back(row.name.get());
  double above = accordion.frame().size.height;
  for (const auto* line : lines) {
    EXPECT_LE(line->frame().origin.y + 18, above);
    above = line->frame().origin.y;
  }
  EXPECT_GE(above, 0);
}

TEST_F(AgentUsageMenuTest, StartsWithWhatItKnewAndNothingElse) {
  desktop.userDefaults.setBoolean(authorizedKey, true);
  desktop.userDefaults.setBoolean(expandedKey, true);
  desktop.userDefaults.setNumber(sessionKey, 0.8);
  desktop.userDefaults.setBoolean("agentUsage.authorized.v1", true);
  launch();
  EXPECT_THAT(provider->requests, IsEmpty());
  EXPECT_EQ(shown(), "80% | Session usage | ^ | accordion | Disconnect account");
  EXPECT_EQ(view().agentRow().ring().progressColor(), color::systemRed);
  EXPECT_EQ(view().accordionHeight(), 50);
  EXPECT_FALSE(desktop.userDefaults.boolean("agentUsage.authorized.v1"));
  reopenMenu();
  provider->answer(TransientFailure{});
  EXPECT_EQ(view().accordionHeight(), 50);
}

TEST_F(AgentUsageMenuTest, RowsComeAndGoWithTheSettingsAtTheNextOpening) {
  connect(plainUsage());
  provider->requests.clear();
  EXPECT_EQ(view().placeholderRows().front()->toolTip(),
            "Gemini CLI usage monitoring is coming in a future update");
  const char* keys[] = {visibleKey, "agentUsage.visible.gemini", "agentUsage.visible.openai"};
  const double heights[] = {26 + 2 * 48 + 4, 26 + 48 + 4, 30};
  for (std::size_t i = 0; i < std::size(keys); ++i) {
    desktop.userDefaults.setBoolean(keys[i], false);
    reopenMenu();
    EXPECT_EQ(shown(), "nothing");
    EXPECT_EQ(view().frame().size.height, heights[i]);
    EXPECT_EQ(statusItem().menu()->items().at(1)->properties().isHidden, i == 2);
  }
  EXPECT_THAT(provider->requests, IsEmpty());
  desktop.userDefaults.setString(visibleKey, "no boolean");
  reopenMenu();
  EXPECT_EQ(shown(), connectedClosed);
  EXPECT_EQ(provider->requests.size(), 1u);
}

TEST(UsageMiniRingViewTest, IsGreenThenYellowThenRed) {
  using namespace color;
  UsageMiniRingView ring;
  for (const auto& [progress, shown, color, text] : {std::tuple{-0.5, 0.0, systemGreen, "0%"},
                                                     {0.5999, 0.5999, systemGreen, "60%"},
                                                     {0.6, 0.6, systemYellow, "60%"},
                                                     {0.7999, 0.7999, systemYellow, "80%"},
                                                     {0.8, 0.8, systemRed, "80%"},
                                                     {1.3, 1.0, systemRed, "100%"},
                                                     {0.004, 0.004, systemGreen, "0%"},
                                                     {0.425, 0.425, systemGreen, "43%"}}) {
    ring.setProgress(progress);
    EXPECT_EQ(ring.progress(), shown);
    EXPECT_EQ(ring.progressColor(), color);
    EXPECT_EQ(ring.percentLabel().text(), text);
  }
}

}  // namespace
}  // namespace zephyx
