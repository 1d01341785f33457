#include "Runner/AgentUsageMenuView.h"

#include <algorithm>
#include <map>
#include <utility>

#include "Platform/Alert.h"
#include "Platform/Dispatch.h"
#include "Platform/Keychain.h"
#include "Platform/Label.h"
#include "Platform/Platform.h"
#include "Platform/PushButton.h"
#include "Platform/TextMetrics.h"
#include "Platform/UserDefaults.h"
#include "Runner/AgentUsageText.h"
#include "Runner/AgentVisibility.h"
#include "Runner/TelemetryRelay.h"
#include "Runner/UsageMiniRingView.h"

namespace zephyx {
namespace {

namespace setting {
constexpr const char* authorized = "agentUsage.authorized.v2";
constexpr const char* expanded = "agentUsage.expanded.v1";
constexpr const char* session = "agentUsage.session.v1";
constexpr const char* obsoleteAuthorized = "agentUsage.authorized.v1";
}  // namespace setting

constexpr double sectionHeight = 26;
constexpr double sectionLabelHeight = 16;
constexpr double sectionLabelLeft = 18;
constexpr double rowHeight = 56;
constexpr double placeholderHeight = 48;
constexpr double buttonRowHeight = 36;
constexpr double buttonHeight = 26;
constexpr double buttonPadding = 30;
constexpr double bottomMargin = 4;

constexpr TextStyle sectionStyle{.font = {.size = 11, .weight = FontWeight::semibold},
                                 .color = color::secondaryLabel};

constexpr const char* creditsTitle = "See Claude Credits";
constexpr const char* reconnectTitle = "Reconnect Claude";
constexpr const char* disconnectTitle = "Disconnect account";

/// Where the system keeps no secrets.
constexpr const char* notConnectedHere = "Not connected · no secret store";
constexpr const char* reconnectHere = "No secret store: connect again";
constexpr const char* storelessToolTip =
    "Zephyx found no secret store, so it forgets the connection when it quits.";

constexpr std::size_t receiveUpdates = 0;

Alert consentAlert() {
  return {"Receive Claude usage updates?",
          "Zephyx shows your Claude Code session and weekly usage in the menu bar. To connect, it "
          "reads the Claude Code credentials stored in your Mac's Keychain — macOS will ask for "
          "permission and may request your login keychain password. Only the short-lived access "
          "token is read.",
          {"Receive Updates", "Not Now"}};
}

}  // namespace

AgentUsageMenuView::AgentUsageMenuView(Rect frame, std::shared_ptr<UsageProvider> provider,
                                       Platform& platform)
    : View(frame),
      platform_(platform),
      userDefaults_(platform.userDefaults()),
      provider_(std::move(provider)) {
  makeParts();
  readSettings();
  render();
}

void AgentUsageMenuView::makeParts() {
  sectionLabel_ = std::make_shared<Label>("AI Agents", sectionStyle);
  agentRow_ = std::make_shared<AgentRowView>(std::string(provider_->displayName()));
  accordion_ = std::make_shared<AgentUsageAccordion>();
  creditsButton_ = std::make_shared<PushButton>(creditsTitle);
  disconnectButton_ = std::make_shared<PushButton>(disconnectTitle);
  agentRow_->onClick = lifetime_.wrap([this] { rowClicked(std::string(provider_->providerID())); });
  creditsButton_->onClick = lifetime_.wrap([this] { creditsTapped(); });
  disconnectButton_->onClick = lifetime_.wrap([this] { disconnectTapped(); });
  for (const std::shared_ptr<View>& part : std::initializer_list<std::shared_ptr<View>>{
           sectionLabel_, agentRow_, accordion_, creditsButton_, disconnectButton_}) {
    addChild(part);
  }
  for (const auto& agent : AgentRegistry::agents) {
    if (agent.id == provider_->providerID()) continue;
    auto row = std::make_shared<AgentPlaceholderRow>(agent);
    row->onClick = lifetime_.wrap([this, id = std::string(agent.id)] { rowClicked(id); });
    addChild(row);
    placeholderRows_.push_back(std::move(row));
  }
}

void AgentUsageMenuView::readSettings() {
  userDefaults_.removeObject(setting::obsoleteAuthorized);
  isAuthorized_ = userDefaults_.boolean(setting::authorized).value_or(false);
  isExpanded_ = userDefaults_.boolean(setting::expanded).value_or(false);
}

bool AgentUsageMenuView::isVisible(std::string_view id) const {
  return std::any_of(visibleAgents_.begin(), visibleAgents_.end(),
                     [&](const auto& each) { return each.id == id; });
}

bool AgentUsageMenuView::accordionVisible() const {
  return isVisible(provider_->providerID()) && isAuthorized_ && isExpanded_;
}

double AgentUsageMenuView::accordionHeight() const {
  return accordionVisible() ? accordion_->height() : 0;
}

// ---- What the user does

void AgentUsageMenuView::rowClicked(const std::string& id) {
  std::map<std::string, std::string> properties{{"agent", id}};
  const bool flips = id == provider_->providerID() && isConnected();
  if (flips) {
    setExpanded(!isExpanded_);
    showDisclosure();
    properties["expanded"] = isExpanded_ ? "true" : "false";
  }
  TelemetryRelay::shared().track("agent_row_clicked", std::move(properties));
  if (flips && onToggleExpand) onToggleExpand();
}

void AgentUsageMenuView::creditsTapped() {
  if (isConnecting_) return;
  isConnecting_ = true;
  creditsButton_->setEnabled(false);
  if (isAuthorized_ && needsReconnect_) return fetch(true);
  if (onWillAsk) onWillAsk();
  platform_.dispatch().mainQueue().async(lifetime_.wrap([this] { askForConsent(); }));
}

void AgentUsageMenuView::askForConsent() {
  platform_.alerts().show(consentAlert(), lifetime_.wrap([this](std::size_t button) {
    if (button == receiveUpdates) {
      fetch(true);
    } else {
      isConnecting_ = false;
      creditsButton_->setEnabled(true);
    }
  }));
}

void AgentUsageMenuView::disconnectTapped() {
  provider_->invalidateCredentials();
  ++latestFetch_;
  isFetching_ = false;
  forgetAccount();
  render();
}

// ---- Requests and what comes of them

void AgentUsageMenuView::refresh() {
  if (isVisible(provider_->providerID())) lookForSecretStore();
  if (!isAuthorized_ || !isVisible(provider_->providerID()) || isFetching_) return;
  fetch(false);
}

void AgentUsageMenuView::lookForSecretStore() {
  platform_.dispatch().globalQueue().async(
      [&keychain = platform_.keychain(), &mainQueue = platform_.dispatch().mainQueue(),
       take = std::function<void(bool)>(lifetime_.wrap([this](bool isAvailable) {
         if (std::exchange(hasSecretStore_, isAvailable) != isAvailable) render();
       }))] {
        const bool isAvailable = keychain.isAvailable();
        mainQueue.async([take, isAvailable] { take(isAvailable); });
      });
}

void AgentUsageMenuView::fetch(bool interactive) {
  isFetching_ = true;
  const auto number = ++latestFetch_;
  provider_->fetchUsage(interactive,
                        lifetime_.wrap([this, number, interactive](const UsageFetchResult& result) {
                          if (number != latestFetch_) return;
                          isFetching_ = false;
                          isConnecting_ = false;
                          handleFetchResult(result, interactive);
                        }));
}

void AgentUsageMenuView::handleFetchResult(const UsageFetchResult& result,
                                           bool confirmAuthorization) {
  if (const auto* usage = std::get_if<AgentUsage>(&result)) {
    take(*usage, confirmAuthorization);
  } else if (std::holds_alternative<CredentialsUnavailable>(result)) {
    forgetAccount();
  } else if (std::holds_alternative<ReauthorizationRequired>(result)) {
    setExpanded(false);
    needsReconnect_ = true;
  }
  render();
}

void AgentUsageMenuView::take(const AgentUsage& usage, bool confirmAuthorization) {
  if (confirmAuthorization) setAuthorized(true);
  needsReconnect_ = false;
  usage_ = usage;
  userDefaults_.setNumber(setting::session, usage.sessionUtilization);
}

void AgentUsageMenuView::forgetAccount() {
  setAuthorized(false);
  setExpanded(false);
  needsReconnect_ = false;
  usage_.reset();
  userDefaults_.removeObject(setting::session);
}

void AgentUsageMenuView::setAuthorized(bool authorized) {
  isAuthorized_ = authorized;
  userDefaults_.setBoolean(setting::authorized, authorized);
}

void AgentUsageMenuView::setExpanded(bool expanded) {
  isExpanded_ = expanded;
  userDefaults_.setBoolean(setting::expanded, expanded);
}

// ---- What is to be seen

void AgentUsageMenuView::render() {
  const auto session = usage_ ? usage_->sessionUtilization : userDefaults_.number(setting::session);
  if (isAuthorized_ && session) {
    agentRow_->ring().setProgress(*session);
  } else {
    agentRow_->ring().clear();
  }
  agentRow_->setSubtitle(subtitle());
  agentRow_->setToolTip(hasSecretStore_ ? "" : storelessToolTip);
  accordion_->show(usage_);
  creditsButton_->setTitle(needsReconnect_ ? reconnectTitle : creditsTitle);
  creditsButton_->setEnabled(!isConnecting_);
  applyLayoutForState();
}

std::string AgentUsageMenuView::subtitle() const {
  if (usage_ && !(needsReconnect_ && !hasSecretStore_)) return agentUsageText::session(*usage_);
  if (isAuthorized_) return hasSecretStore_ ? "Session usage" : reconnectHere;
  return hasSecretStore_ ? "Not connected" : notConnectedHere;
}

void AgentUsageMenuView::showDisclosure() {
  using Disclosure = AgentRowView::Disclosure;
  const auto whenConnected = isExpanded_ ? Disclosure::open : Disclosure::closed;
  agentRow_->setDisclosure(isConnected() ? whenConnected : Disclosure::none);
}

void AgentUsageMenuView::applyLayoutForState() {
  visibleAgents_.clear();
  for (const auto& agent : AgentRegistry::agents) {
    if (isAgentVisible(userDefaults_, agent.id)) visibleAgents_.push_back(agent);
  }
  const bool showsAgent = isVisible(provider_->providerID());
  agentRow_->setHidden(!showsAgent);
  showDisclosure();
  accordion_->setHidden(!accordionVisible());
  creditsButton_->setHidden(!showsAgent || isConnected());
  disconnectButton_->setHidden(!showsAgent || !isConnected());
  for (const auto& row : placeholderRows_) row->setHidden(!isVisible(row->agent().id));
  setFrame({frame().origin, {frame().size.width, wantedHeight()}});
  relayout();
}

double AgentUsageMenuView::wantedHeight() const {
  double height = sectionHeight + bottomMargin;
  for (const auto& agent : visibleAgents_) {
    height += agent.id == provider_->providerID() ? rowHeight + accordionHeight() + buttonRowHeight
                                                  : placeholderHeight;
  }
  return height;
}

void AgentUsageMenuView::layout() {
  const double width = bounds().size.width;
  double top = bounds().size.height;
  const auto place = [&](View& part, double height) {
    top -= height;
    part.setFrame({{0, top}, {width, height}});
  };
  top -= sectionHeight;
  sectionLabel_->setFrame(
      {{sectionLabelLeft, top}, {width - 2 * sectionLabelLeft, sectionLabelHeight}});
  for (const auto& agent : visibleAgents_) {
    if (agent.id != provider_->providerID()) {
      const auto row = std::find_if(placeholderRows_.begin(), placeholderRows_.end(),
                                    [&](const auto& each) { return each->agent() == agent; });
      place(**row, placeholderHeight);
      continue;
    }
    place(*agentRow_, rowHeight);
    place(*accordion_, accordionHeight());
    top -= buttonRowHeight;
    for (auto* button : {creditsButton_.get(), disconnectButton_.get()}) {
      const double words = platform_.textMetrics().size(button->title(), Font{}).width;
      button->setFrame({{AgentRowView::textLeft, top + (buttonRowHeight - buttonHeight) / 2},
                        {words + buttonPadding, buttonHeight}});
    }
  }
}

}  // namespace zephyx
