#pragma once

#include <memory>

#include "Platform/UrlSession.h"

namespace zephyx {

/// Requests by NSURLSession. Destroyed on the main thread; from then on no completion is called.
class MacUrlSession final : public UrlSession {
 public:
  MacUrlSession();
  ~MacUrlSession() override;

  void start(UrlRequest request, UrlCompletion completion) override;

 private:
  class Gate;
  std::shared_ptr<Gate> gate_;
};

}  // namespace zephyx
