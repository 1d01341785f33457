#pragma once

#import <FlutterMacOS/FlutterMacOS.h>

namespace zephyx {
class ApplicationDelegate;
}

/// Passes AppKit's questions on to the host. Its superclass tells the engines and their plug-ins
/// about the application's life.
@interface ZephyxApplicationDelegate : FlutterAppDelegate
- (instancetype)initWithHostDelegate:(zephyx::ApplicationDelegate*)delegate;
/// The host's delegate is about to go.
- (void)forgetHostDelegate;
@end
