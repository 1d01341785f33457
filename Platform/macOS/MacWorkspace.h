#pragma once

#include <memory>
#include <string>

#include "Platform/Workspace.h"

namespace zephyx {

class MacWorkspace final : public Workspace {
 public:
  std::shared_ptr<RunningApplication> frontmostApplication() const override;
  bool usesCooperativeActivation() const override;
  void openUrl(const std::string& url) override;
  void activateFileViewerSelecting(const std::string& path) override;
};

}  // namespace zephyx
