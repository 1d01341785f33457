#pragma once

#import <AppKit/AppKit.h>

#include "Platform/Pasteboard.h"

namespace zephyx {

/// A deep copy: an item that was taken from the pasteboard cannot be written back to it.
class MacPasteboardItems final : public PasteboardItems {
 public:
  /// Reads the pasteboard: asks the owner for each type of each item. Nothing is kept of a
  /// pasteboard that changes meanwhile. The caller holds the pasteboard's lock.
  explicit MacPasteboardItems(NSPasteboard* pasteboard);

  bool isEmpty() const override { return items_.count == 0; }
  /// New items with the same types and data, to be written once.
  NSArray<NSPasteboardItem*>* nativeItems() const;

 private:
  NSArray<NSPasteboardItem*>* items_;
};

}  // namespace zephyx
