#include "Platform/Linux/TerminationSignals.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QtCore/QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <utility>

namespace zephyx {
namespace {

constexpr std::array endSignals{SIGTERM, SIGINT, SIGHUP};

/// A handler may do little more than write. Unlike a signal mask, handlers are not inherited by the
/// programs that the host starts.
int wakeUp = -1;

void noteSignal(int) {
  const int savedError = errno;
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = ::write(wakeUp, &one, sizeof one);
  errno = savedError;
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> handler)
    : handler_(std::move(handler)) {
  wakeUp = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  notifier_ = std::make_unique<QSocketNotifier>(wakeUp, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
    std::uint64_t count = 0;
    if (::read(wakeUp, &count, sizeof count) > 0) handler_();
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
  notifier_.reset();
  close(std::exchange(wakeUp, -1));
}

}  // namespace zephyx
