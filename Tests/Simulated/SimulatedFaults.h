#pragma once

#include <string>
#include <utility>
#include <vector>

namespace zephyx {

/// Breaches of the services' contracts by whoever used them: wrong thread, a second reply, and the
/// like. A test that used the machine properly ends with none.
class SimulatedFaults {
 public:
  void add(std::string what) { all_.push_back(std::move(what)); }
  const std::vector<std::string>& all() const { return all_; }

 private:
  std::vector<std::string> all_;
};

}  // namespace zephyx
