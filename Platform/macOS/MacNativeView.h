#pragma once

#import <AppKit/AppKit.h>

/// The side of a native view that shows one kind of the host's views.
@protocol ZephyxNativeView <NSObject>
/// Brings what this kind of view adds to all views in line with the view. Called after changes of
/// the view and of the appearance, with that appearance as the current one.
- (void)showView;
/// Where the native view lies so that what it draws lies in `frame`.
- (NSRect)nativeFrameForFrame:(NSRect)frame;
@end
