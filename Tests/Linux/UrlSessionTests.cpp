#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <future>

#include "Platform/Linux/Network/LinuxUrlSession.h"
#include "Tests/Desktop/HttpsServer.h"
#include "Tests/Desktop/TemporaryDirectory.h"
#include "Tests/Desktop/WaitFor.h"

namespace zephyx {
namespace {

class UrlSessionTest : public testing::Test {
 protected:
  UrlSessionTest() { trust(HttpsServer::certificateIn(folder_.path())); }
  ~UrlSessionTest() override { qunsetenv("SSL_CERT_FILE"); }

  static void trust(const std::filesystem::path& certificate) {
    qputenv("SSL_CERT_FILE", certificate.c_str());
  }

  static std::future<std::optional<UrlResponse>> start(LinuxUrlSession& session,
                                                       const UrlRequest& request) {
    const auto promise = std::make_shared<std::promise<std::optional<UrlResponse>>>();
    session.start(request, [promise](auto response) { promise->set_value(std::move(response)); });
    return promise->get_future();
  }
  static std::optional<UrlResponse> responseTo(const UrlRequest& request) {
    LinuxUrlSession session;
    auto response = start(session, request);
    EXPECT_EQ(response.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    return response.get();
  }

  const std::filesystem::path& folder() const { return folder_.path(); }

 private:
  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  TemporaryDirectory folder_;
};

TEST_F(UrlSessionTest, AServerThatCannotProveItsNameGetsNothing) {
  HttpsServer server(folder());
  const auto otherName = "https://localhost:" + std::to_string(server.port()) + "/";
  EXPECT_FALSE(responseTo({.url = otherName}));
  trust("");
  EXPECT_FALSE(responseTo({.url = server.address() + "/"}));
  EXPECT_TRUE(server.requests().empty());
  trust(HttpsServer::certificateIn(folder()));
  EXPECT_TRUE(responseTo({.url = server.address() + "/"}));
}

TEST_F(UrlSessionTest, NothingOfARequestReachesAnotherServer) {
  HttpsServer server(folder());
  TemporaryDirectory otherFolder;
  HttpsServer other(otherFolder.path());
  HttpsServer plain(folder(), HttpsServer::Protocol::http);
  for (const auto* target : {&other, &plain}) {
    server.reply({.status = 307, .headers = "Location: " + target->address() + "/\r\n"});
    const auto response =
        responseTo({.url = server.address() + "/", .headers = {{"Authorization", "Bearer a"}}});
    ASSERT_TRUE(response);
    EXPECT_EQ(response->status, 307);
    EXPECT_TRUE(target->requests().empty());
  }
}

TEST_F(UrlSessionTest, OfAHugeBodyLittleIsTaken) {
  HttpsServer server(folder());
  constexpr std::size_t size = 50'000'000;
  server.reply({.padding = size});
  EXPECT_FALSE(responseTo({.url = server.address() + "/"}));
  EXPECT_LT(server.sentBytes(), size / 4);  // the system's own buffers included
}

TEST_F(UrlSessionTest, AnAnswerThatBreaksOffIsNone) {
  auto server = std::make_unique<HttpsServer>(folder());
  const auto address = server->address() + "/";
  server->reply({.body = "whole to all appearance", .cutsOff = true});
  EXPECT_FALSE(responseTo({.url = address}));
  server.reset();
  EXPECT_FALSE(responseTo({.url = address})) << "nobody listens";
}

TEST_F(UrlSessionTest, SpeaksUnderItsOwnNameAndPlainlyWhenAsked) {
  HttpsServer plain(folder(), HttpsServer::Protocol::http);
  ASSERT_TRUE(responseTo({.url = plain.address() + "/"}));
  const auto request = plain.requests().at(0);
  EXPECT_NE(std::find(request.headers.begin(), request.headers.end(),
                      std::pair<std::string, std::string>("User-Agent", "Zephyx")),
            request.headers.end());
}

TEST_F(UrlSessionTest, ASessionThatEndsDoesNotWaitForItsRequests) {
  HttpsServer server(folder());
  server.reply({.body = "never", .interval = std::chrono::hours(1)});
  auto session = std::make_unique<LinuxUrlSession>();
  auto response = start(*session, {.url = server.address() + "/"});
  ASSERT_TRUE(waitFor([&] { return !server.requests().empty(); }));
  const auto before = std::chrono::steady_clock::now();
  session.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(1));
  EXPECT_THROW(response.get(), std::future_error);  // the completion went without a call
}

}  // namespace
}  // namespace zephyx
