#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

struct xcb_connection_t;

namespace zephyx {

/// A clipboard owner that can do what ordinary programs do not do on command: offer many formats,
/// count who asks, never answer, copy again within milliseconds. Lives on a thread and a connection
/// of its own; its methods may be called from any one thread.
class SelectionOwner {
 public:
  using Formats = std::map<std::string, std::string>;
  enum class Behaviour { Answers, NeverAnswers, AnswersTargetsOnly };

  explicit SelectionOwner(const std::string& display, const std::string& selection = "CLIPBOARD");
  SelectionOwner(const SelectionOwner&) = delete;
  SelectionOwner& operator=(const SelectionOwner&) = delete;
  ~SelectionOwner();

  void setBehaviour(Behaviour behaviour) { behaviour_ = behaviour; }
  /// Takes the selection with these contents; returns the moment at which the server had been told.
  std::chrono::steady_clock::time_point copy(Formats formats);
  std::chrono::steady_clock::time_point copyText(const std::string& text);
  /// How often a format was asked for, TARGETS included.
  int requests(const std::string& target) const;

 private:
  void run();
  void answer(const void* requestEvent);
  std::uint32_t atom(const std::string& name);
  std::string atomName(std::uint32_t atom);

  xcb_connection_t* connection_;
  std::uint32_t window_ = 0;
  std::uint32_t selection_ = 0;
  std::atomic<Behaviour> behaviour_{Behaviour::Answers};
  mutable std::mutex mutex_;
  Formats formats_;
  std::map<std::string, int> requests_;
  std::atomic<bool> ends_{false};
  std::thread thread_;
};

}  // namespace zephyx
