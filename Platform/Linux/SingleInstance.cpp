#include "Platform/Linux/SingleInstance.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <QtCore/QSocketNotifier>
#include <cctype>
#include <chrono>
#include <cstring>
#include <thread>
#include <utility>

namespace zephyx {
namespace {

/// How long a second start waits for the first, which may itself just be starting.
constexpr std::chrono::seconds patience{5};
constexpr std::chrono::milliseconds pause{10};
constexpr char reopenRequest = 'r';
constexpr char reopenAnswer = 'k';

/// ":0" and ":0.0" are the same display.
std::string displayName(const std::string& display) {
  std::string name = display;
  const auto colon = name.rfind(':');
  const auto dot = name.rfind('.');
  if (colon != std::string::npos && dot != std::string::npos && dot > colon) name.resize(dot);
  for (char& each : name) {
    if (!std::isalnum(static_cast<unsigned char>(each))) each = '_';
  }
  return name;
}

bool addressOf(const std::string& path, sockaddr_un& address) {
  address = {};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) return false;
  std::memcpy(address.sun_path, path.c_str(), path.size());
  return true;
}

}  // namespace

SingleInstance::SingleInstance(const std::string& folder, const std::string& display)
    : basePath_(folder + "/com.zephyx.app-" + displayName(display)),
      lockPath_(basePath_ + ".lock"),
      socketPath_(basePath_ + ".sock") {}

SingleInstance::~SingleInstance() {
  stopListening();
  if (socket_) unlink(socketPath_.c_str());
}

SingleInstance::Outcome SingleInstance::claim() {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  do {
    // Tried again each time: the first may be ending just now.
    if (takeLock()) return openSocket() ? Outcome::first : Outcome::unreachable;
    if (askToReopen()) return Outcome::second;
    std::this_thread::sleep_for(pause);
  } while (std::chrono::steady_clock::now() < deadline);
  return Outcome::unreachable;
}

bool SingleInstance::takeLock() {
  FileDescriptor file(open(lockPath_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
  if (!file || flock(file.get(), LOCK_EX | LOCK_NB) != 0) return false;
  lock_ = std::move(file);
  return true;
}

bool SingleInstance::openSocket() {
  sockaddr_un address{};
  if (!addressOf(socketPath_, address)) return false;
  FileDescriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!listener) return false;
  unlink(socketPath_.c_str());
  if (bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(listener.get(), 8) != 0) {
    return false;
  }
  socket_ = std::move(listener);
  return true;
}

bool SingleInstance::askToReopen() const {
  sockaddr_un address{};
  if (!addressOf(socketPath_, address)) return false;
  const FileDescriptor caller(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (!caller) return false;
  if (connect(caller.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      send(caller.get(), &reopenRequest, 1, MSG_NOSIGNAL) != 1) {
    return false;
  }
  pollfd answer{caller.get(), POLLIN, 0};
  char byte = 0;
  return poll(&answer, 1, static_cast<int>(std::chrono::milliseconds(patience).count())) > 0 &&
         recv(caller.get(), &byte, 1, 0) == 1 && byte == reopenAnswer;
}

void SingleInstance::listen(std::function<void()> onReopen) {
  onReopen_ = std::move(onReopen);
  if (!socket_) return;
  notifier_ = std::make_unique<QSocketNotifier>(socket_.get(), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [this] { answerCallers(); });
}

void SingleInstance::stopListening() {
  notifier_.reset();
  onReopen_ = nullptr;
}

void SingleInstance::answerCallers() {
  bool isAsked = false;
  while (true) {
    const FileDescriptor caller(accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!caller) break;
    // The request is a byte that is sent right after connecting; a caller that is silent is none.
    pollfd request{caller.get(), POLLIN, 0};
    char byte = 0;
    if (poll(&request, 1, 20) <= 0 || recv(caller.get(), &byte, 1, 0) != 1) continue;
    if (byte != reopenRequest) continue;
    isAsked = true;
    send(caller.get(), &reopenAnswer, 1, MSG_NOSIGNAL);
  }
  if (isAsked && onReopen_) onReopen_();
}

}  // namespace zephyx
