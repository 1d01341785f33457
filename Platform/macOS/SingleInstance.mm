#import "Platform/macOS/SingleInstance.h"

#import <AppKit/AppKit.h>
#import <dispatch/dispatch.h>

#include <unistd.h>

#include <cstdint>

namespace zephyx {
namespace {

constexpr std::int64_t openTimeout = 5 * std::int64_t{NSEC_PER_SEC};

NSRunningApplication* runningInstance() {
  NSString* identifier = NSBundle.mainBundle.bundleIdentifier;
  if (!identifier) return nil;
  for (NSRunningApplication* each in
       [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier]) {
    if (each.processIdentifier != getpid() && !each.terminated) return each;
  }
  return nil;
}

}  // namespace

bool handOverToRunningInstance() {
  @autoreleasepool {
    NSRunningApplication* other = runningInstance();
    if (!other) return false;
    NSURL* url = other.bundleURL;
    if (!url) return true;
    // The answer comes on a queue of the system's. This process ends next, and must not before the
    // request has gone out.
    dispatch_semaphore_t opened = dispatch_semaphore_create(0);
    [NSWorkspace.sharedWorkspace openApplicationAtURL:url
                                        configuration:[NSWorkspaceOpenConfiguration configuration]
                                    completionHandler:^(NSRunningApplication*, NSError*) {
                                      dispatch_semaphore_signal(opened);
                                    }];
    dispatch_semaphore_wait(opened, dispatch_time(DISPATCH_TIME_NOW, openTimeout));
    return true;
  }
}

}  // namespace zephyx
