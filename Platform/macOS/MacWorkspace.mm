#import "Platform/macOS/MacWorkspace.h"

#import <AppKit/AppKit.h>

#import "Platform/macOS/MacRunningApplication.h"
#import "Platform/macOS/Strings.h"

namespace zephyx {

std::shared_ptr<RunningApplication> MacWorkspace::frontmostApplication() const {
  @autoreleasepool {
    NSRunningApplication* application = NSWorkspace.sharedWorkspace.frontmostApplication;
    return application ? std::make_shared<MacRunningApplication>(application) : nullptr;
  }
}

bool MacWorkspace::usesCooperativeActivation() const {
  if (@available(macOS 14.0, *)) return true;
  return false;
}

void MacWorkspace::openUrl(const std::string& text) {
  NSURL* url = [NSURL URLWithString:nsString(text)];
  if (!url) return;
  // Not -openURL:, which waits for the program to be found and started.
  [NSWorkspace.sharedWorkspace openURL:url
                         configuration:[NSWorkspaceOpenConfiguration configuration]
                     completionHandler:nil];
}

void MacWorkspace::activateFileViewerSelecting(const std::string& path) {
  // An empty path would mean the working folder, and an array takes no nil.
  NSURL* url = path.empty() ? nil : [NSURL fileURLWithPath:nsString(path)];
  if (!url) return;
  [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:@[ url ]];
}

}  // namespace zephyx
