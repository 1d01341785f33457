#import "Platform/macOS/MacAlerts.h"

#import <AppKit/AppKit.h>

#include <utility>

#import "Platform/macOS/Strings.h"

@interface ZephyxAlert : NSObject
- (instancetype)initWithAlert:(NSAlert*)alert
                   completion:(std::function<void(std::size_t)>)completion;
- (void)run;
@end

@implementation ZephyxAlert {
  NSAlert* _alert;
  std::function<void(std::size_t)> _completion;
}

- (instancetype)initWithAlert:(NSAlert*)alert
                   completion:(std::function<void(std::size_t)>)completion {
  if ((self = [super init])) {
    _alert = alert;
    _completion = std::move(completion);
  }
  return self;
}

- (void)run {
  [NSApp activateIgnoringOtherApps:YES];
  const NSInteger button = [_alert runModal] - NSAlertFirstButtonReturn;
  // Quitting stops the loop without an answer.
  if (button >= 0) _completion(static_cast<std::size_t>(button));
}
@end

namespace zephyx {

void MacAlerts::show(const Alert& alert, std::function<void(std::size_t)> completion) {
  auto* native = [[NSAlert alloc] init];
  native.messageText = nsString(alert.message);
  native.informativeText = nsString(alert.informativeText);
  for (const auto& title : alert.buttons) [native addButtonWithTitle:nsString(title)];
  // By itself only a button called "Cancel" has it.
  if (alert.buttons.size() > 1) native.buttons.lastObject.keyEquivalent = @"\033";
  native.window.level = NSPopUpMenuWindowLevel;  // the main window is above ordinary modal panels
  auto* question = [[ZephyxAlert alloc] initWithAlert:native completion:std::move(completion)];
  // Not while a menu is tracked: its loop would stand still below the alert's, and the menu with
  // it.
  [question performSelector:@selector(run)
                 withObject:nil
                 afterDelay:0
                    inModes:@[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode ]];
}

}  // namespace zephyx
