#import "Platform/macOS/ZephyxApplicationDelegate.h"

#include "Platform/Application.h"

@implementation ZephyxApplicationDelegate {
  zephyx::ApplicationDelegate* _delegate;
}

- (instancetype)initWithHostDelegate:(zephyx::ApplicationDelegate*)delegate {
  self = [super init];
  if (self) _delegate = delegate;
  return self;
}

- (void)forgetHostDelegate {
  _delegate = nullptr;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  if (_delegate) _delegate->applicationDidFinishLaunching();
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender {
  return _delegate && _delegate->applicationShouldTerminateAfterLastWindowClosed();
}

- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)app {
  return _delegate && _delegate->applicationSupportsSecureRestorableState();
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)flag {
  if (_delegate) _delegate->applicationShouldHandleReopen();
  return NO;  // AppKit has nothing left to do
}

@end
