#pragma once

#include <initializer_list>
#include <random>
#include <string>
#include <vector>

namespace zephyx {

/// Makes session logs with everything that can be wrong with one. The same seed makes the same.
class RandomSessionLog {
 public:
  explicit RandomSessionLog(unsigned seed) : random_(seed) {}

  /// When some lines are stamped, others before or after it: 2025-06-01T12:00:00.5Z.
  static constexpr double since = 1748779200.5;

  std::string log();
  unsigned pick(unsigned below) { return static_cast<unsigned>(random_()) % below; }

 private:
  std::string line();
  std::string entry();
  std::string message();
  std::string usage();
  std::string filler();
  /// Members in any order.
  std::string object(std::vector<std::string> members);
  std::string key(const std::string& name);
  const char* oneOf(std::initializer_list<const char*> choices);

  std::mt19937 random_;
};

}  // namespace zephyx
