#pragma once

#include <QtCore/QThread>
#include <memory>

#include "Platform/UrlSession.h"

namespace zephyx {

/// Requests by the toolkit's network classes, on a thread that starts with the first one. Servers
/// prove their names by the system's roots and by those in the file that SSL_CERT_FILE names, as
/// elsewhere. Made and destroyed on the main thread.
class LinuxUrlSession final : public UrlSession {
 public:
  LinuxUrlSession();
  ~LinuxUrlSession() override;

  void start(UrlRequest request, UrlCompletion completion) override;

 private:
  class Worker;

  QThread thread_;
  Worker* worker_;  ///< belongs to the thread
};

}  // namespace zephyx
