#pragma once

#import <AppKit/AppKit.h>

#include <memory>

namespace zephyx {

class View;

/// A native view that shows a view tree and follows its changes for as long as it lives: for the
/// `view` of a menu item, or as the content view of a window. It has the tree's size now. A menu
/// makes it as wide as itself and takes over a height that the tree gets later; a window makes it
/// as large as itself. Main thread.
NSView* makeNativeView(const std::shared_ptr<View>& view);

}  // namespace zephyx
