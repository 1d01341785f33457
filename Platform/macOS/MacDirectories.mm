#import "Platform/macOS/MacDirectories.h"

#import <Foundation/Foundation.h>

#import "Platform/macOS/Strings.h"

namespace zephyx {

std::optional<std::string> MacDirectories::applicationSupport() const {
  @autoreleasepool {
    NSURL* folder = [NSFileManager.defaultManager URLsForDirectory:NSApplicationSupportDirectory
                                                         inDomains:NSUserDomainMask]
                        .firstObject;
    if (!folder) return std::nullopt;
    return utf8String(folder.path);
  }
}

std::string MacDirectories::home() const {
  @autoreleasepool {
    return utf8String(NSHomeDirectory());
  }
}

}  // namespace zephyx
