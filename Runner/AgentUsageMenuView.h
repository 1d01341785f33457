#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/LifetimeGuard.h"
#include "Platform/View.h"
#include "Runner/AgentPlaceholderRow.h"
#include "Runner/AgentRegistry.h"
#include "Runner/AgentUsageAccordion.h"
#include "Runner/UsageProvider.h"

namespace zephyx {

class Label;
class Platform;
class PushButton;
class UserDefaults;

/// The status menu's row about coding agents: how much the user has consumed with each. The one
/// with a provider can be connected, unfolded and disconnected. Main thread.
class AgentUsageMenuView final : public View {
 public:
  AgentUsageMenuView(Rect frame, std::shared_ptr<UsageProvider> provider, Platform& platform);

  /// The user opened or closed the accordion; the height changes with `applyLayoutForState`.
  std::function<void()> onToggleExpand;
  /// A question to the user comes next, which an open menu would be in the way of.
  std::function<void()> onWillAsk;

  /// Asks for fresh figures when the account is connected and shown. One request at a time.
  void refresh();
  /// Reads anew which agents are to be seen, and takes the height that the state needs.
  void applyLayoutForState();

  bool hasVisibleAgents() const { return !visibleAgents_.empty(); }
  bool accordionVisible() const;
  double accordionHeight() const;

  // The parts.
  AgentRowView& agentRow() const { return *agentRow_; }
  const AgentUsageAccordion& accordion() const { return *accordion_; }
  /// Connects, and reconnects.
  PushButton& creditsButton() const { return *creditsButton_; }
  PushButton& disconnectButton() const { return *disconnectButton_; }
  const std::vector<std::shared_ptr<AgentPlaceholderRow>>& placeholderRows() const {
    return placeholderRows_;
  }

 protected:
  void layout() override;

 private:
  void makeParts();
  void readSettings();
  bool isVisible(std::string_view id) const;
  bool isConnected() const { return isAuthorized_ && !needsReconnect_; }
  double wantedHeight() const;

  void rowClicked(const std::string& id);
  void creditsTapped();
  void askForConsent();
  void disconnectTapped();

  void lookForSecretStore();
  void fetch(bool interactive);
  void handleFetchResult(const UsageFetchResult& result, bool confirmAuthorization);
  void take(const AgentUsage& usage, bool confirmAuthorization);
  void forgetAccount();
  void setAuthorized(bool authorized);
  void setExpanded(bool expanded);
  /// Shows what is known, and lays it out.
  void render();
  std::string subtitle() const;
  void showDisclosure();

  Platform& platform_;
  UserDefaults& userDefaults_;
  const std::shared_ptr<UsageProvider> provider_;
  std::optional<AgentUsage> usage_;
  std::vector<AgentRegistry::Agent> visibleAgents_;
  bool isExpanded_ = false;
  bool isAuthorized_ = false;
  bool needsReconnect_ = false;
  bool hasSecretStore_ = true;  ///< as far as is known

  /// The one request whose result counts, and what is known about it. A result that belongs to an
  /// earlier one, or to an account that has been disconnected since, must not bring figures back.
  std::uint64_t latestFetch_ = 0;
  bool isFetching_ = false;
  /// The user has been asked, or the system is asking, whether to connect.
  bool isConnecting_ = false;

  std::shared_ptr<Label> sectionLabel_;
  std::shared_ptr<AgentRowView> agentRow_;
  std::shared_ptr<AgentUsageAccordion> accordion_;
  std::shared_ptr<PushButton> creditsButton_;
  std::shared_ptr<PushButton> disconnectButton_;
  std::vector<std::shared_ptr<AgentPlaceholderRow>> placeholderRows_;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
