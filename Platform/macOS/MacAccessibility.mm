#import "Platform/macOS/MacAccessibility.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

namespace zephyx {

bool MacAccessibility::isProcessTrusted() const {
  return AXIsProcessTrusted();
}

bool MacAccessibility::isProcessTrustedWithPrompt() {
  NSDictionary* options = @{(__bridge id)kAXTrustedCheckOptionPrompt : @YES};
  // The answer is of now; the question stays on screen after it.
  return AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
}

}  // namespace zephyx
