#pragma once

#include <QtCore/QEvent>
#include <optional>

#include "Platform/Events.h"

namespace zephyx {

/// The host's view of one of the toolkit's events; nothing for kinds that it does not know and for
/// keys that its keyboard does not have.
std::optional<Event> hostEvent(const QEvent& event);

}  // namespace zephyx
