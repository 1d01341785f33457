#include "Runner/UsageServiceUrl.h"

#include <algorithm>
#include <string_view>

#ifndef ZEPHYX_USAGE_API_HOST
#define ZEPHYX_USAGE_API_HOST "api.anthropic.com"
#endif

namespace zephyx {
namespace {

constexpr const char* path = "/api/oauth/usage";
constexpr std::string_view plain = "http://";

/// Nothing by which another part of a URL could begin. A colon too many is the session's to refuse.
bool isHostAndPort(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view(".-:[]").find(c) != std::string_view::npos;
  });
}

bool isThisComputer(std::string_view hostAndPort) {
  const auto end = hostAndPort.starts_with('[') ? hostAndPort.find(']') + 1 : hostAndPort.find(':');
  const auto host = hostAndPort.substr(0, end);
  const auto port = hostAndPort.substr(host.size());
  if (!port.empty() && !port.starts_with(':')) return false;
  return host == "127.0.0.1" || host == "[::1]" || host == "localhost";
}

}  // namespace

std::optional<std::string> usageServiceUrl(const std::optional<std::string>& setting) {
  std::string_view host = setting ? std::string_view(*setting) : ZEPHYX_USAGE_API_HOST;
  const bool isPlain = host.starts_with(plain);
  if (isPlain) host.remove_prefix(plain.size());
  if (!isHostAndPort(host) || (isPlain && !isThisComputer(host))) return std::nullopt;
  return (isPlain ? "http://" : "https://") + std::string(host) + path;
}

}  // namespace zephyx
