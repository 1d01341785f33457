#pragma once

#include <memory>

class QApplication;

namespace zephyx {

/// The toolkit, set up for a fast start and for the host's look. Outlives everything that draws,
/// waits or listens.
class Toolkit {
 public:
  Toolkit(int argc, char** argv);
  ~Toolkit();

 private:
  int argc_;  ///< the toolkit keeps a reference
  std::unique_ptr<QApplication> application_;
};

}  // namespace zephyx
