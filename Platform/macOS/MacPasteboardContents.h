#pragma once

#import <Foundation/Foundation.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Pasteboard.h"

namespace zephyx {

struct PasteboardAccess;

/// Reads the pasteboard at the time of the call, and only while it still has the change count that
/// these contents were met with: what another program has put there since may be a secret that the
/// types seen before did not show. A read may wait for the owner, for another device, or for the
/// user whom the system asks for permission.
class MacPasteboardContents final : public PasteboardContents {
 public:
  MacPasteboardContents(std::shared_ptr<PasteboardAccess> access, NSInteger changeCount);

  std::vector<std::string> types() const override;
  std::optional<Bytes> data(const std::string& type) const override;
  std::optional<std::string> string(const std::string& type) const override;
  /// Null: the system does not tell who copied.
  std::shared_ptr<RunningApplication> source() const override { return nullptr; }

 private:
  template <typename Value, typename Read>
  Value read(Read body) const;

  std::shared_ptr<PasteboardAccess> access_;
  NSInteger changeCount_;
};

}  // namespace zephyx
