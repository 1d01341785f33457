#pragma once

#import <Foundation/Foundation.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "Platform/Pasteboard.h"

namespace zephyx {

class Dispatch;
struct PasteboardAccess;

/// The general pasteboard. The host's type names are the system's.
class MacPasteboard final : public Pasteboard {
 public:
  explicit MacPasteboard(Dispatch& dispatch);
  ~MacPasteboard() override;

  /// The count last seen, while contents are being read.
  std::int64_t changeCount() const override;
  std::shared_ptr<PasteboardContents> contents() const override;
  /// Empty: the system announces nothing.
  [[nodiscard]] Registration observeChanges(PasteboardReadPlan plan,
                                            std::function<void()> handler) override;
  std::int64_t clearContents() override;
  bool writeString(const std::string& text) override;
  bool writeUrl(const std::string& url) override;
  bool writeImage(const Image& image) override;
  void copyItems(std::function<void(std::shared_ptr<const PasteboardItems>)> done) const override;
  bool writeItems(const PasteboardItems& items) override;

 private:
  Dispatch& dispatch_;
  std::shared_ptr<PasteboardAccess> access_;
  mutable NSInteger changeCount_ = 0;
};

}  // namespace zephyx
