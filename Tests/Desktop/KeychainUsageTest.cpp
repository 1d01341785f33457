#include <fstream>

#include "Platform/Platform.h"
#include "Platform/UserDefaults.h"
#include "Runner/ClaudeUsageProvider.h"
#include "Tests/Desktop/HttpsServer.h"
#include "Tests/Desktop/KeychainTest.h"
#include "Tests/Desktop/RunUntil.h"

namespace zephyx {

namespace {

constexpr const char* ownItem = "net.quillon.app.claude-usage-token";
constexpr const char* usage = R"({"five_hour": {"utilization": 40}})";

/// The provider on real services: secrets in the keyring, the tool's file, a server by HTTPS.
class KeychainUsageTest : public KeychainTest {
 protected:
  void SetUp() override {
    enter(true);
    startKeyring();
    qputenv("SSL_CERT_FILE", HttpsServer::certificateIn(desktop_->home()).c_str());
    static char name[] = "desktop_keychain_tests";
    static char* arguments[] = {name, nullptr};
    platform_ = makePlatform(1, arguments);
    ASSERT_TRUE(platform_);
    server_ = std::make_unique<HttpsServer>(desktop_->home());
    platform_->userDefaults().setString("agentUsage.host",
                                        "127.0.0.1:" + std::to_string(server_->port()));
    provider_ = std::make_unique<ClaudeUsageProvider>(
        *platform_, [](double) { return std::vector<ModelUsage>{}; });
  }

  void toolHas(const std::string& token) {
    std::filesystem::create_directories(desktop_->home() / ".claude");
    std::ofstream(desktop_->home() / ".claude/.credentials.json")
        << R"({"claudeAiOauth": {"accessToken": ")" << token << "\"}}";
  }

  UsageFetchResult fetch(bool interactive) {
    std::optional<UsageFetchResult> result;
    provider_->fetchUsage(interactive, [&](const UsageFetchResult& answer) { result = answer; });
    EXPECT_TRUE(runUntil([&] { return result.has_value(); }));
    return result.value();
  }
  std::string lastToken() {
    const auto requests = server_->requests();
    if (requests.empty()) return {};
    for (const auto& [name, value] : requests.back().headers) {
      if (name == "Authorization") return value;
    }
    return {};
  }

  std::unique_ptr<Platform> platform_;
  std::unique_ptr<HttpsServer> server_;
  std::unique_ptr<ClaudeUsageProvider> provider_;
};

TEST_F(KeychainUsageTest, ATokenGoesFromTheToolToTheKeyringAndTheServerAndIsForgotten) {
  const UsageFetchResult success = AgentUsage{.sessionUtilization = 0.4};
  EXPECT_EQ(fetch(true), UsageFetchResult(CredentialsUnavailable{}));
  toolHas("first");
  server_->reply({.body = usage});
  EXPECT_EQ(fetch(true), success);
  EXPECT_EQ(lastToken(), "Bearer first");
  EXPECT_EQ(witness(ownItem), "first");

  // The tool has renewed its token.
  toolHas("second");
  server_->reply({.status = 401});
  server_->reply({.body = usage});
  EXPECT_EQ(fetch(true), success);
  EXPECT_EQ(lastToken(), "Bearer second");
  EXPECT_EQ(witness(ownItem), "second");

  server_->reply({.status = 401});
  EXPECT_EQ(fetch(false), UsageFetchResult(ReauthorizationRequired{}));
  EXPECT_EQ(witness(ownItem), "");
  EXPECT_EQ(server_->requests().size(), 4u);

  server_->reply({.body = usage});
  EXPECT_EQ(fetch(true), success);
  // Disconnected just before the program ends.
  provider_->invalidateCredentials();
  provider_.reset();
  platform_.reset();
  EXPECT_EQ(witness(ownItem), "");
}

}  // namespace
}  // namespace zephyx
