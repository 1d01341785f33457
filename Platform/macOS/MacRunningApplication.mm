#import "Platform/macOS/MacRunningApplication.h"

#import "Platform/macOS/MacImage.h"
#import "Platform/macOS/Strings.h"

namespace zephyx {
namespace {

/// NSApplicationActivateIgnoringOtherApps, by its value: the name is deprecated since the system
/// stopped heeding it, the systems before that still need it.
constexpr auto ignoringOtherApps = static_cast<NSApplicationActivationOptions>(1 << 1);
constexpr auto noOptions = static_cast<NSApplicationActivationOptions>(0);

}  // namespace

MacRunningApplication::MacRunningApplication(NSRunningApplication* application)
    : application_(application) {}

std::string MacRunningApplication::bundleIdentifier() const {
  return utf8String(application_.bundleIdentifier);
}

std::string MacRunningApplication::localizedName() const {
  return utf8String(application_.localizedName);
}

std::shared_ptr<Image> MacRunningApplication::icon() const {
  @autoreleasepool {
    NSImage* icon = application_.icon;
    NSString* bundle = application_.bundleURL.path;
    if (!icon && bundle) icon = [NSWorkspace.sharedWorkspace iconForFile:bundle];
    // A copy: the system hands the same picture to others, who may change its size.
    return icon ? std::make_shared<MacImage>([icon copy]) : nullptr;
  }
}

bool MacRunningApplication::isActive() const {
  return application_.isActive;
}

bool MacRunningApplication::activateIgnoringOtherApps() {
  return [application_ activateWithOptions:ignoringOtherApps];
}

bool MacRunningApplication::activateCooperatively() {
  if (@available(macOS 14.0, *)) {
    [NSApp yieldActivationToApplication:application_];
    return [application_ activateFromApplication:NSRunningApplication.currentApplication
                                         options:noOptions];
  }
  return false;
}

}  // namespace zephyx
