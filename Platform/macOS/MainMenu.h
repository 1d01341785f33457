#pragma once

#import <AppKit/AppKit.h>

namespace zephyx {

/// The main menu. An application that lives in the menu bar never shows it, but text fields get
/// Command-C and the like from its key equivalents. There is no Command-Q: only the status menu
/// quits.
NSMenu* makeMainMenu();

}  // namespace zephyx
