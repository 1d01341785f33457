#include "Runner/ClaudeCredentials.h"

#include "Channel/Utf8.h"
#include "Platform/Keychain.h"
#include "Runner/Json.h"

namespace zephyx {
namespace {

constexpr const char* ownService = "net.quillon.app.claude-usage-token";
constexpr const char* claudeCodeService = "Claude Code-credentials";

}  // namespace

std::optional<std::string> ClaudeCredentials::readOwnToken() const {
  const auto bytes = keychain_.password(ownService);
  if (!bytes) return std::nullopt;
  std::string token(bytes->begin(), bytes->end());
  if (!isValidUtf8(token)) return std::nullopt;
  return token;
}

void ClaudeCredentials::storeOwnToken(const std::string& token) const {
  deleteOwnToken();
  keychain_.setPassword(ownService, Bytes(token.begin(), token.end()));
}

void ClaudeCredentials::deleteOwnToken() const {
  keychain_.deletePassword(ownService);
}

std::optional<std::string> ClaudeCredentials::readClaudeCodeToken() const {
  const auto bytes = keychain_.password(claudeCodeService);
  if (!bytes) return std::nullopt;
  const auto document = parseJson(*bytes);
  const auto& token = member(member(document, "claudeAiOauth"), "accessToken");
  if (!token.is_string()) return std::nullopt;
  return token.get<std::string>();
}

}  // namespace zephyx
