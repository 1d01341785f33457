#import "Platform/macOS/ZephyxApplication.h"

@implementation ZephyxApplication

- (void)terminate:(id)sender {
  // Flutter's delegate may ask its programs first. It says no then, and calls again once they
  // agree.
  id<NSApplicationDelegate> delegate = self.delegate;
  if ([delegate respondsToSelector:@selector(applicationShouldTerminate:)] &&
      [delegate applicationShouldTerminate:self] != NSTerminateNow) {
    return;
  }
  [self leaveMainLoop];
}

- (void)leaveMainLoop {
  // While a modal loop runs, `stop:` ends only that one.
  if (self.modalWindow) {
    [self stopModalWithCode:NSModalResponseAbort];
    [self performSelector:@selector(leaveMainLoop)
               withObject:nil
               afterDelay:0
                  inModes:@[ NSRunLoopCommonModes ]];
  } else {
    [self stop:nil];
  }
  // A loop looks whether it has been stopped after its next event only.
  [self postEvent:[NSEvent otherEventWithType:NSEventTypeApplicationDefined
                                     location:NSZeroPoint
                                modifierFlags:0
                                    timestamp:0
                                 windowNumber:0
                                      context:nil
                                      subtype:0
                                        data1:0
                                        data2:0]
          atStart:YES];
}

@end
