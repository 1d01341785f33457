#pragma once

#import <AppKit/AppKit.h>

#include <mutex>

namespace zephyx {

/// The general pasteboard. The system's object keeps a cache of types that two threads must not
/// touch at once (the process dies in it), so each use of it here holds the lock.
struct PasteboardAccess {
  NSPasteboard* const pasteboard = NSPasteboard.generalPasteboard;
  std::mutex mutex;
};

}  // namespace zephyx
