#pragma once

#include <variant>

#include "Runner/AgentUsage.h"

namespace zephyx {

/// No credential could be obtained: none is stored, or the user refused access.
struct CredentialsUnavailable {
  bool operator==(const CredentialsUnavailable&) const = default;
};
/// The service does not accept the credential: the user must reconnect.
struct ReauthorizationRequired {
  bool operator==(const ReauthorizationRequired&) const = default;
};
/// A network error, an unexpected status or a reply that cannot be read: later may be better.
struct TransientFailure {
  bool operator==(const TransientFailure&) const = default;
};

/// The outcome of one fetch; fresh figures when it succeeded.
using UsageFetchResult =
    std::variant<AgentUsage, CredentialsUnavailable, ReauthorizationRequired, TransientFailure>;

}  // namespace zephyx
