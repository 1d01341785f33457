#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "Platform/Dispatch.h"
#include "Platform/UrlSession.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

/// Requests to a web server.
class NetworkContract : public ContractTest {
 protected:
  NetworkContract() : address_(desktop().startWebServer()) {}

  /// The outcome of a request, which must complete once, later, off the main thread.
  std::optional<UrlResponse> responseTo(UrlRequest request) {
    int completions = 0;
    bool wasMain = false;
    std::optional<UrlResponse> response;
    auto& dispatch = platform().dispatch();
    platform().urlSession().start(std::move(request), [&](std::optional<UrlResponse> answer) {
      wasMain = dispatch.isMainThread();
      dispatch.mainQueue().async([&completions, &response, answer = std::move(answer)] {
        ++completions;
        response = answer;
      });
    });
    EXPECT_EQ(completions, 0);
    EXPECT_TRUE(becomesTrue([&] { return completions > 0; }));
    desktop().pass(0.02);
    EXPECT_EQ(completions, 1);
    EXPECT_FALSE(wasMain);
    return response;
  }

  static std::string text(const UrlResponse& response) {
    return {response.body.begin(), response.body.end()};
  }

  const std::string address_;
};

TEST_P(NetworkContract, WhateverTheStatusAWholeAnswerIsAResponse) {
  for (const int status : {200, 204, 302, 400, 401, 429, 500, 503}) {
    const std::string body = status == 204 ? "" : "body of " + std::to_string(status);
    desktop().webServerReplies({.status = status, .body = body, .location = address_ + "/other"});
    const auto response =
        responseTo({.url = address_ + "/path",
                    .headers = {{"Authorization", "Bearer s3cret"}, {"X-Two", "2"}}});
    ASSERT_TRUE(response) << status;
    EXPECT_EQ(response->status, status);
    EXPECT_EQ(text(*response), body);
  }
  // One request each: no redirection was followed and no refusal answered.
  const auto requests = desktop().webRequests();
  EXPECT_EQ(requests.size(), 8u);
  for (const auto& request : requests) {
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.url, "/path");
    for (const auto& header : {std::pair{"Authorization", "Bearer s3cret"}, {"X-Two", "2"}}) {
      EXPECT_EQ(std::count(request.headers.begin(), request.headers.end(),
                           std::pair<std::string, std::string>(header)),
                1);
    }
  }
}

TEST_P(NetworkContract, TheLimitHoldsForTheWholeRequestAlsoWhileBytesArrive) {
  for (const double interval : {100.0, 0.02}) {
    desktop().webServerReplies({.body = std::string(1000, 'x'), .interval = interval});
    const double start = platform().dispatch().wallClock();
    EXPECT_FALSE(responseTo({.url = address_ + "/", .timeout = 0.4}));
    const double taken = platform().dispatch().wallClock() - start;
    EXPECT_GE(taken, 0.39);
    EXPECT_LT(taken, 2);
  }
  desktop().webServerReplies({.body = "slow but whole", .interval = 0.01});
  EXPECT_TRUE(responseTo({.url = address_ + "/", .timeout = 4}));
}

TEST_P(NetworkContract, ABodyBeyondTheLimitIsNoResponse) {
  for (const std::size_t size : {1000u, 1001u}) {
    desktop().webServerReplies({.body = std::string(size, 'x')});
    const auto response = responseTo({.url = address_ + "/", .maximumBodySize = 1000});
    EXPECT_EQ(response.has_value(), size == 1000u);
  }
}

TEST_P(NetworkContract, AMalformedRequestIsNotSent) {
  EXPECT_FALSE(responseTo({.url = "file:///etc/hostname"}));
  EXPECT_FALSE(responseTo({.url = address_ + "/ HTTP/1.1\r\nX: y"}));
  EXPECT_FALSE(responseTo(
      {.url = address_ + "/", .headers = {{"Authorization", "Bearer a\r\nX-Injected: b"}}}));
  EXPECT_TRUE(desktop().webRequests().empty());
}

}  // namespace zephyx
