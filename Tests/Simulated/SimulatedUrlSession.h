#pragma once

#include <deque>
#include <limits>

#include "Platform/UrlSession.h"
#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

/// What a web server does with a request: the answer, or nothing for a broken connection.
struct SimulatedReply {
  static constexpr double never = std::numeric_limits<double>::infinity();

  std::optional<UrlResponse> response;
  double delay = 0;  ///< seconds until the last byte
};

/// The network as the host sees it, with one web server.
class SimulatedUrlSession final : public UrlSession {
 public:
  explicit SimulatedUrlSession(SimulatedDispatch& dispatch) : dispatch_(dispatch) {}

  void start(UrlRequest request, UrlCompletion completion) override {
    const auto reply = request.isWellFormed() ? answerTo(request) : SimulatedReply{};
    const bool isLate = reply.delay >= request.timeout;
    const bool isLong = reply.response && reply.response->body.size() > request.maximumBodySize;
    const auto response = isLate || isLong ? std::nullopt : reply.response;
    dispatch_.globalQueue().asyncAfter(
        isLate ? request.timeout : reply.delay,
        [completion = std::move(completion), response] { completion(response); });
  }

  /// Answers the next request that has no answer yet. Without one, connections break.
  void reply(SimulatedReply reply) { replies_.push_back(std::move(reply)); }
  /// What the server got to see, the oldest first.
  const std::vector<UrlRequest>& requests() const { return requests_; }

 private:
  SimulatedReply answerTo(const UrlRequest& request) {
    requests_.push_back(request);
    if (replies_.empty()) return {};
    const auto reply = replies_.front();
    replies_.pop_front();
    return reply;
  }

  SimulatedDispatch& dispatch_;
  std::deque<SimulatedReply> replies_;
  std::vector<UrlRequest> requests_;
};

}  // namespace zephyx
