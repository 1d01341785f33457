#pragma once

#include <QtCore/QString>
#include <string_view>

#include "Channel/Value.h"

namespace zephyx {

/// In characters, as sent to a chat server: showing and editing more would no longer be fluent.
inline constexpr qsizetype longestSourceText = 200'000;

/// Empty when the message has no such text.
inline QString textArgument(const Map& message, std::string_view key) {
  const Value* value = message.find(key);
  const auto* text = value ? value->asString() : nullptr;
  return text ? QString::fromStdString(*text) : QString();
}

}  // namespace zephyx
