#include "Runner/SessionLogLines.h"

#include <simdjson.h>

#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "Runner/InternetDateTime.h"
#include "Runner/SessionLogText.h"

namespace zephyx {
namespace {

using simdjson::dom::object;

static_assert(SessionLogLines::padding >= simdjson::SIMDJSON_PADDING);

/// A parser keeps the memory that its longest line took; longer lines than this get one of their
/// own.
constexpr std::size_t longLine = 1 << 20;

/// The member of that name, the last one when there are several; an empty `T` when it is missing or
/// of another kind.
template <typename T>
std::optional<T> member(const object& members, std::string_view name) {
  std::optional<T> found;
  for (const auto& [key, value] : members) {
    if (key != name) continue;
    T content;
    found = value.get(content) == simdjson::SUCCESS ? std::optional(content) : std::nullopt;
  }
  return found;
}

/// JSON that the parser refuses: numbers beyond its range, or more levels than it follows. The same
/// object with floating-point numbers for those, down to the level of the counts.
std::string simplified(std::string_view line) {
  constexpr int levelOfCounts = 3;
  const auto keep = [](int level, nlohmann::json::parse_event_t, const nlohmann::json&) {
    return level <= levelOfCounts;
  };
  const auto value = nlohmann::json::parse(line, keep, false);
  return value.is_object() ? value.dump() : std::string();
}

}  // namespace

struct SessionLogLines::Parser {
  /// The line as an object. It refers to memory of the parser, until the next line.
  std::optional<object> parse(std::string_view line) {
    auto result = dom.parse(line.data(), line.size(), false);
    if (result.error() == simdjson::NUMBER_ERROR || result.error() == simdjson::DEPTH_ERROR) {
      result = dom.parse(simplified(line));
    }
    object content;
    return result.get(content) == simdjson::SUCCESS ? std::optional(content) : std::nullopt;
  }

  simdjson::dom::parser dom;
};

SessionLogLines::SessionLogLines(double since)
    : since_(since), parser_(std::make_unique<Parser>()) {}

SessionLogLines::~SessionLogLines() = default;

void SessionLogLines::aggregateModelUsage(std::string_view lines, ModelUsageTotals& totals) {
  while (true) {
    const auto mention = findUsageMention(lines);
    if (mention == std::string_view::npos) return;
    const auto begin = beginningOfLastLine(lines.substr(0, mention));
    const auto end = std::min(lines.find('\n', mention), lines.size());
    addLine(lines.substr(begin, end - begin), totals);
    if (end == lines.size()) return;
    lines.remove_prefix(end + 1);
  }
}

void SessionLogLines::addLine(std::string_view line, ModelUsageTotals& totals) {
  Parser own;
  const auto entry = (line.size() > longLine ? own : *parser_).parse(line);
  if (!entry) return;
  const auto message = member<object>(*entry, "message");
  if (!message) return;
  const auto model = member<std::string_view>(*message, "model");
  if (!model || *model == "<synthetic>") return;
  const auto usage = member<object>(*message, "usage");
  if (!usage) return;
  const auto timestamp = member<std::string_view>(*entry, "timestamp");
  const auto time = timestamp ? parseInternetDateTime(*timestamp) : std::nullopt;
  if (!time || *time < since_) return;
  const auto count = [&](std::string_view name) {
    return member<std::int64_t>(*usage, name).value_or(0);
  };
  totals.add({.model = std::string(*model),
              .inputTokens = count("input_tokens"),
              .outputTokens = count("output_tokens"),
              .cacheReadTokens = count("cache_read_input_tokens"),
              .cacheCreationTokens = count("cache_creation_input_tokens")});
}

}  // namespace zephyx
