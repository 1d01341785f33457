#include "Platform/Linux/TerminationSignals.h"

#include <QtCore/QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace zephyx {
namespace {

constexpr std::array endSignals{SIGTERM, SIGINT, SIGHUP};

/// A handler may do little more than write. Unlike a signal mask, handlers are not inherited by the
/// programs that the host starts.
const EventFd* wakeUp = nullptr;

void noteSignal(int) {
  const int savedError = errno;
  wakeUp->raise();
  errno = savedError;
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> handler)
    : handler_(std::move(handler)) {
  wakeUp = &raised_;
  notifier_ = std::make_unique<QSocketNotifier>(raised_.descriptor(), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
    raised_.lower();
    handler_();
  });
  struct sigaction action {};
  action.sa_handler = noteSignal;
  action.sa_flags = SA_RESTART;
  for (const int signal : endSignals) sigaction(signal, &action, nullptr);
}

TerminationSignals::~TerminationSignals() {
  struct sigaction action {};
  action.sa_handler = SIG_DFL;
  for (const int signal : endSignals) sigaction(signal, &action, nullptr);
  wakeUp = nullptr;
}

}  // namespace zephyx
