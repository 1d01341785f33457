#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Channel/MethodCall.h"
#include "Channel/MethodResult.h"
#include "Tests/Simulated/SimulatedMessenger.h"

namespace zephyx {

class SimulatedDispatch;

/// The program in an engine, speaking Flutter's standard method codec on one channel, in bytes: it
/// records the host's calls, answers them with null, and makes calls of its own.
class SimulatedScreen {
 public:
  static constexpr const char* channelName = "com.zephyx.app/menu";

  SimulatedScreen(SimulatedDispatch& dispatch, std::shared_ptr<SimulatedMessenger> messenger);

  /// The host's calls since the last `takeCalls`.
  const std::vector<MethodCall>& calls() const { return calls_; }
  std::vector<MethodCall> takeCalls() { return std::exchange(calls_, {}); }
  std::vector<MethodCall> callsOf(const std::string& method) const;

  using PendingReply = std::shared_ptr<std::optional<MethodReply>>;
  /// Sends a call; the reply appears in what is returned.
  PendingReply send(const std::string& method, const Value& arguments = {});
  PendingReply sendBytes(Bytes message);
  /// Sends a call and returns the reply once everything that is due now has run.
  std::optional<MethodReply> call(const std::string& method, const Value& arguments = {});

  const std::shared_ptr<SimulatedMessenger>& messenger() const { return messenger_; }

 private:
  SimulatedDispatch& dispatch_;
  std::shared_ptr<SimulatedMessenger> messenger_;
  std::vector<MethodCall> calls_;
  Registration handler_;
};

}  // namespace zephyx
