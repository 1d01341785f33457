#import "Platform/macOS/MacSoftwareUpdate.h"

#import "Platform/macOS/Strings.h"

namespace {

zephyx::UpdateState::Stage stage(SPUUserUpdateState* state) {
  switch (state.stage) {
    case SPUUserUpdateStageNotDownloaded:
      return zephyx::UpdateState::Stage::notDownloaded;
    case SPUUserUpdateStageDownloaded:
      return zephyx::UpdateState::Stage::downloaded;
    case SPUUserUpdateStageInstalling:
      return zephyx::UpdateState::Stage::installing;
  }
  return zephyx::UpdateState::Stage::notDownloaded;
}

}  // namespace

@interface ZephyxUpdaterDelegate : NSObject <SPUUpdaterDelegate, SPUStandardUserDriverDelegate>
- (instancetype)initWithHost:(zephyx::SoftwareUpdateDelegate*)host;
- (void)disconnect;
@end

@implementation ZephyxUpdaterDelegate {
  zephyx::SoftwareUpdateDelegate* _host;
}

- (instancetype)initWithHost:(zephyx::SoftwareUpdateDelegate*)host {
  self = [super init];
  if (self) _host = host;
  return self;
}

- (void)disconnect {
  _host = nullptr;
}

- (NSString*)feedURLStringForUpdater:(SPUUpdater*)updater {
  const auto feed = _host ? _host->feedUrlString() : std::nullopt;
  return feed ? zephyx::nsString(*feed) : nil;
}

- (BOOL)supportsGentleScheduledUpdateReminders {
  return _host && _host->supportsGentleScheduledUpdateReminders();
}

- (BOOL)standardUserDriverShouldHandleShowingScheduledUpdate:(SUAppcastItem*)update
                                         andInImmediateFocus:(BOOL)immediateFocus {
  return !_host || _host->shouldHandleShowingScheduledUpdate(
                       zephyx::utf8String(update.displayVersionString), immediateFocus);
}

- (void)standardUserDriverWillHandleShowingUpdate:(BOOL)handleShowingUpdate
                                        forUpdate:(SUAppcastItem*)update
                                            state:(SPUUserUpdateState*)state {
  if (!_host) return;
  _host->willHandleShowingUpdate(handleShowingUpdate,
                                 zephyx::utf8String(update.displayVersionString),
                                 {stage(state), static_cast<bool>(state.userInitiated)});
}

- (void)standardUserDriverDidReceiveUserAttentionForUpdate:(SUAppcastItem*)update {
  if (_host) _host->didReceiveUserAttention(zephyx::utf8String(update.displayVersionString));
}
@end

namespace zephyx {

std::optional<std::string> MacSoftwareUpdate::unavailableReason() const {
  // An updater that starts without them would tell the user of its failure in an alert.
  NSBundle* bundle = NSBundle.mainBundle;
  if (![bundle objectForInfoDictionaryKey:@"SUFeedURL"]) {
    return "This build of Zephyx has no update feed.";
  }
  if (![bundle objectForInfoDictionaryKey:@"SUPublicEDKey"]) {
    return "This build of Zephyx has no key to verify updates with.";
  }
  return std::nullopt;
}

Registration MacSoftwareUpdate::start(SoftwareUpdateDelegate& delegate) {
  if (unavailableReason()) return {};
  delegate_ = [[ZephyxUpdaterDelegate alloc] initWithHost:&delegate];
  controller_ = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                              updaterDelegate:delegate_
                                                           userDriverDelegate:delegate_];
  return Registration([this] {
    [delegate_ disconnect];
    controller_ = nil;
  });
}

void MacSoftwareUpdate::checkForUpdates() {
  [controller_ checkForUpdates:nil];
}

}  // namespace zephyx
