#include "Tests/Desktop/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "Platform/Linux/FileDescriptor.h"
#include "Tests/Desktop/WaitFor.h"

namespace zephyx {
namespace {

[[noreturn]] void fail(const std::string& what) {
  throw std::runtime_error(what + ": " + std::strerror(errno));
}

// Never fills up as a pipe does, and ends at its end although a background child still holds it
// open.
FileDescriptor memoryFile() {
  FileDescriptor file(memfd_create("zephyx-test", MFD_CLOEXEC));
  if (file.get() < 0) fail("memfd_create");
  return file;
}

std::string pathOf(const FileDescriptor& file) {
  return "/proc/self/fd/" + std::to_string(file.get());
}

int openedOutput(const ChildProcessOptions& options) {
  const char* path = options.output.empty() ? "/dev/null" : options.output.c_str();
  const int descriptor = open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  if (descriptor < 0) fail(path);
  return descriptor;
}

}  // namespace

Environment currentEnvironment() {
  Environment result;
  for (char** entry = environ; *entry; ++entry) {
    const std::string variable = *entry;
    const auto equals = variable.find('=');
    if (equals != std::string::npos)
      result[variable.substr(0, equals)] = variable.substr(equals + 1);
  }
  return result;
}

ChildProcess::ChildProcess(const ChildProcessOptions& options) {
  std::vector<char*> arguments;
  for (const auto& argument : options.arguments)
    arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);
  std::vector<std::string> variables;
  for (const auto& [name, value] : options.environment) variables.push_back(name + "=" + value);
  std::vector<char*> environment;
  for (auto& variable : variables) environment.push_back(variable.data());
  environment.push_back(nullptr);

  const int output = openedOutput(options);
  const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
  int failure[2];
  if (pipe2(failure, O_CLOEXEC) != 0) fail("pipe2");
  const pid_t parent = getpid();
  pid_ = fork();
  if (pid_ < 0) fail("fork");
  if (pid_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(127);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    dup2(options.inputDescriptor >= 0 ? options.inputDescriptor : nothing, STDIN_FILENO);
    dup2(options.outputDescriptor >= 0 ? options.outputDescriptor : output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    execvpe(arguments[0], arguments.data(), environment.data());
    const int reason = errno;
    (void)!write(failure[1], &reason, sizeof reason);
    _exit(127);
  }
  close(output);
  close(nothing);
  close(failure[1]);
  int reason = 0;
  const bool started = read(failure[0], &reason, sizeof reason) != sizeof reason;
  close(failure[0]);
  if (!started) {
    waitpid(std::exchange(pid_, -1), nullptr, 0);
    errno = reason;
    fail(options.arguments.at(0));
  }
  handle_ = static_cast<int>(syscall(SYS_pidfd_open, pid_, 0));
  if (handle_ < 0) fail("pidfd_open");
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept {
  *this = std::move(other);
}

ChildProcess& ChildProcess::operator=(ChildProcess&& other) noexcept {
  std::swap(pid_, other.pid_);
  std::swap(handle_, other.handle_);
  std::swap(status_, other.status_);
  return *this;
}

ChildProcess::~ChildProcess() {
  terminate();
  if (handle_ >= 0) close(handle_);
}

bool ChildProcess::isRunning() {
  return pid_ > 0 && !waitForExit(std::chrono::milliseconds(0));
}

std::optional<int> ChildProcess::waitForExit(std::chrono::milliseconds deadline) {
  if (pid_ <= 0 || status_) return status_;
  pollfd ended{handle_, POLLIN, 0};
  const auto patientDeadline = static_cast<int>(deadline.count()) * patience();
  if (poll(&ended, 1, patientDeadline) <= 0) return std::nullopt;
  int status = 0;
  if (waitpid(pid_, &status, 0) != pid_) return std::nullopt;
  status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  return status_;
}

void ChildProcess::signal(int number) const {
  if (pid_ > 0 && !status_) ::kill(pid_, number);
}

void ChildProcess::terminate() {
  if (!isRunning()) return;
  signal(SIGTERM);
  if (!waitForExit(std::chrono::seconds(2))) kill();
}

void ChildProcess::kill() {
  signal(SIGKILL);
  waitForExit();
}

CommandResult runCommand(const std::vector<std::string>& arguments, const Environment& environment,
                         const std::string& input, std::chrono::milliseconds deadline) {
  const FileDescriptor standardInput = memoryFile(), standardOutput = memoryFile();
  if (!input.empty()) writeFile(pathOf(standardInput), input);
  ChildProcessOptions options;
  options.arguments = arguments;
  options.environment = environment;
  options.inputDescriptor = standardInput.get();
  options.outputDescriptor = standardOutput.get();
  ChildProcess child(options);
  const auto status = child.waitForExit(deadline);
  if (!status) throw std::runtime_error(arguments.at(0) + " did not end in time");
  return {*status, readFile(pathOf(standardOutput))};
}

std::string readFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

void writeFile(const std::filesystem::path& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

}  // namespace zephyx
