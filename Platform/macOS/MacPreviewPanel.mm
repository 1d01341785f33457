#import "Platform/macOS/MacPreviewPanel.h"

#import <AppKit/AppKit.h>
#import <QuickLookUI/QuickLookUI.h>

#include <optional>
#include <string>

#import "Platform/macOS/EventTranslation.h"
#import "Platform/macOS/Strings.h"
#import "Platform/macOS/ZephyxApplicationDelegate.h"

/// Data source and delegate of the panel, which does not retain it.
@interface ZephyxPreviewSource : NSObject <QLPreviewPanelDataSource, QLPreviewPanelDelegate>
- (void)setController:(zephyx::PreviewPanelController*)controller;
- (BOOL)hasController;
@end

@implementation ZephyxPreviewSource {
  zephyx::PreviewPanelController* _controller;
}

- (void)setController:(zephyx::PreviewPanelController*)controller {
  _controller = controller;
}

- (BOOL)hasController {
  return _controller != nullptr;
}

- (NSInteger)numberOfPreviewItemsInPreviewPanel:(QLPreviewPanel*)panel {
  return _controller ? _controller->numberOfPreviewItems() : 0;
}

- (id<QLPreviewItem>)previewPanel:(QLPreviewPanel*)panel previewItemAtIndex:(NSInteger)index {
  const auto item =
      _controller ? _controller->previewItemAt(static_cast<int>(index)) : std::nullopt;
  return item ? [NSURL URLWithString:zephyx::nsString(*item)] : nil;
}

- (BOOL)previewPanel:(QLPreviewPanel*)panel handleEvent:(NSEvent*)event {
  const auto translated = zephyx::hostEvent(event);
  return translated && _controller && _controller->handleEvent(*translated);
}

@end

namespace {
__weak ZephyxPreviewSource* currentSource = nil;
}

/// The panel belongs to the first object of the key window's responder chain that wants it, and
/// forgets its data source whenever it finds another one or none. The application's delegate ends
/// every chain, whichever of the host's windows the preview is opened from.
@interface ZephyxApplicationDelegate (PreviewControl)
@end

@implementation ZephyxApplicationDelegate (PreviewControl)

- (BOOL)acceptsPreviewPanelControl:(QLPreviewPanel*)panel {
  return [currentSource hasController];
}

- (void)beginPreviewPanelControl:(QLPreviewPanel*)panel {
  panel.dataSource = currentSource;
  panel.delegate = currentSource;
}

- (void)endPreviewPanelControl:(QLPreviewPanel*)panel {
  panel.dataSource = nil;
  panel.delegate = nil;
}

@end

namespace zephyx {

MacPreviewPanel::MacPreviewPanel() : source_([[ZephyxPreviewSource alloc] init]) {
  currentSource = source_;
}

MacPreviewPanel::~MacPreviewPanel() {
  setController(nullptr);
}

void MacPreviewPanel::setController(PreviewPanelController* controller) {
  [source_ setController:controller];
  if (controller) return takeControl();
  if (!QLPreviewPanel.sharedPreviewPanelExists) return;
  QLPreviewPanel* panel = QLPreviewPanel.sharedPreviewPanel;
  [panel updateController];
  if (panel.dataSource == source_) panel.dataSource = nil;
  if (panel.delegate == source_) panel.delegate = nil;
}

// Set directly as well, for a chain that the panel does not follow to its end: an input field in
// front of the application may want the panel for itself.
void MacPreviewPanel::takeControl() {
  QLPreviewPanel* panel = QLPreviewPanel.sharedPreviewPanel;
  [panel updateController];
  if (panel.dataSource != source_) panel.dataSource = source_;
  if (panel.delegate != source_) panel.delegate = source_;
}

void MacPreviewPanel::setLevel(int level) {
  QLPreviewPanel.sharedPreviewPanel.level = level;
}

bool MacPreviewPanel::isVisible() const {
  return QLPreviewPanel.sharedPreviewPanelExists && QLPreviewPanel.sharedPreviewPanel.isVisible;
}

void MacPreviewPanel::reloadData() {
  [QLPreviewPanel.sharedPreviewPanel reloadData];
}

void MacPreviewPanel::makeKeyAndOrderFront() {
  [QLPreviewPanel.sharedPreviewPanel makeKeyAndOrderFront:nil];
  takeControl();  // the key window has changed, and with it the chain
}

void MacPreviewPanel::orderOut() {
  [QLPreviewPanel.sharedPreviewPanel orderOut:nil];
}

const void* MacPreviewPanel::notificationObject() const {
  return (__bridge const void*)QLPreviewPanel.sharedPreviewPanel;
}

}  // namespace zephyx
