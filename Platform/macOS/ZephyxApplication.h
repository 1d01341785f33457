#pragma once

#import <AppKit/AppKit.h>

/// An application whose `run` returns when it terminates, so that the host's objects can end in
/// their order. AppKit's own `terminate:` leaves the process from within the main loop.
@interface ZephyxApplication : NSApplication
@end
