#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// What to ask a web server for.
struct UrlRequest {
  std::string url;  ///< "https:" or "http:"
  std::string method = "GET";
  std::vector<std::pair<std::string, std::string>> headers;
  double timeout = 60;  ///< seconds for everything, from the call to the last byte of the answer
  std::size_t maximumBodySize = 1'048'576;  ///< bytes, after decompression

  /// Whether it is a request at all: a URL of one of the two kinds, and no control character by
  /// which a header could end and another begin.
  bool isWellFormed() const;
};

struct UrlResponse {
  int status = 0;
  Bytes body;
};

/// Whatever the server's status is, the response; nothing when no whole one came: no connection, a
/// server that cannot prove its name, time is up, a body beyond the limit, a malformed request.
using UrlCompletion = std::function<void(std::optional<UrlResponse>)>;

/// Asks web servers. A redirection is never followed, so that no header reaches another server: it
/// is a response as any other. Nothing of a request or an answer is written to disk or kept for the
/// next one; requests do not wait for a connection to come back.
class UrlSession {
 public:
  virtual ~UrlSession() = default;

  /// Calls `completion` once, later, on a thread of the session's; not any more when the platform
  /// ends before. Any thread.
  virtual void start(UrlRequest request, UrlCompletion completion) = 0;
};

}  // namespace zephyx
