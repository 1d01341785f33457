#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Platform/UrlSession.h"

namespace zephyx {

/// How the server answers one request.
struct HttpsReply {
  int status = 200;
  std::string headers;  ///< further ones, each with its line end
  std::string body;
  std::size_t padding = 0;                ///< bytes behind the body
  std::chrono::milliseconds interval{0};  ///< between two bytes of the body; 0 for all at once
  bool cutsOff = false;                   ///< announces a further byte and closes
  bool hangs = false;                     ///< announces a further byte, which never comes
};

/// A web server on the loopback, on a thread of its own, with a new certificate for 127.0.0.1 that
/// nobody trusts by himself. For that it needs the program openssl. Has an application object of
/// its own where there is none.
class HttpsServer {
 public:
  enum class Protocol { https, http };

  /// Its key and certificate go into `folder`.
  explicit HttpsServer(const std::filesystem::path& folder, Protocol protocol = Protocol::https);
  HttpsServer(const HttpsServer&) = delete;
  HttpsServer& operator=(const HttpsServer&) = delete;
  ~HttpsServer();

  /// For a test that makes the toolkit's application next, which there may be only one of. Until
  /// then nothing is answered.
  void letGoOfApplication();

  static std::filesystem::path certificateIn(const std::filesystem::path& folder);

  /// Such as "https://127.0.0.1:4711".
  std::string address() const;
  int port() const;
  /// Answers the next request that has no reply yet; the last reply is given again and again.
  void reply(HttpsReply reply);
  /// Answers requests for that path from now on; other paths without an answer are not found.
  void set(const std::string& path, HttpsReply reply);
  /// Answers that went out whole.
  int answered() const;
  /// Answers that hung until their reader went away.
  int abandoned() const;
  int requests(const std::string& path) const;
  /// The requests that came, with their paths as URLs.
  std::vector<UrlRequest> requests() const;
  /// The body of the last request.
  std::string lastBody() const;
  /// Bytes of bodies that went out, what the system still holds included.
  std::size_t sentBytes() const;

 private:
  class Listener;
  std::unique_ptr<Listener> listener_;
};

}  // namespace zephyx
