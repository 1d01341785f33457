#import "Platform/macOS/MacScreens.h"

#import <AppKit/AppKit.h>

#import "Platform/macOS/Coordinates.h"

namespace zephyx {

std::vector<Screen> MacScreens::screens() const {
  std::vector<Screen> all;
  for (NSScreen* screen in NSScreen.screens) {
    all.push_back({rectOf(screen.frame), rectOf(screen.visibleFrame)});
  }
  return all;
}

int MacScreens::mainScreenIndex() const {
  NSScreen* main = NSScreen.mainScreen;
  if (!main) return -1;
  const NSUInteger index = [NSScreen.screens indexOfObject:main];
  return index == static_cast<NSUInteger>(NSNotFound) ? -1 : static_cast<int>(index);
}

Point MacScreens::mouseLocation() const {
  return pointOf(NSEvent.mouseLocation);
}

}  // namespace zephyx
