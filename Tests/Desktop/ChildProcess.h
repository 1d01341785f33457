#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zephyx {

using Environment = std::map<std::string, std::string>;

/// The variables of this process.
Environment currentEnvironment();

struct ChildProcessOptions {
  std::vector<std::string> arguments;  ///< the first one is looked up in PATH
  Environment environment = currentEnvironment();
  std::filesystem::path output;  ///< receives both output streams; thrown away when empty
  int inputDescriptor = -1;      ///< /dev/null when negative
  int outputDescriptor = -1;     ///< takes the place of `output` for the standard output
};

/// A child that never outlives its owner: it is ended, by its own id, when this object goes, and by
/// the kernel when this process dies.
class ChildProcess {
 public:
  ChildProcess() = default;
  /// Throws std::runtime_error when the program cannot be started.
  explicit ChildProcess(const ChildProcessOptions& options);
  ChildProcess(ChildProcess&& other) noexcept;
  ChildProcess& operator=(ChildProcess&& other) noexcept;
  ~ChildProcess();

  pid_t pid() const { return pid_; }
  bool isRunning();
  /// The exit status, or the negative signal number; empty when it still runs at the deadline.
  std::optional<int> waitForExit(std::chrono::milliseconds deadline = std::chrono::seconds(5));
  void signal(int number) const;
  /// Asks it to end, and ends it when it does not within two seconds.
  void terminate();
  /// Ends it without asking, and waits until it is gone.
  void kill();

 private:
  pid_t pid_ = -1;
  int handle_ = -1;  // a pidfd: readable once the process has ended
  std::optional<int> status_;
};

struct CommandResult {
  int status = 0;
  std::string output;
};

/// Runs a command to its end. A child that it leaves behind in the background is not waited for.
/// Throws std::runtime_error when the deadline passes.
CommandResult runCommand(const std::vector<std::string>& arguments, const Environment& environment,
                         const std::string& input = {},
                         std::chrono::milliseconds deadline = std::chrono::seconds(20));

/// The whole file; empty when it cannot be read.
std::string readFile(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, const std::string& content);

}  // namespace zephyx
