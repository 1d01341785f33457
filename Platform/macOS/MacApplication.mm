#import "Platform/macOS/MacApplication.h"

#include <cstdlib>

#import "Platform/macOS/MacWindow.h"
#import "Platform/macOS/MainMenu.h"
#import "Platform/macOS/Strings.h"
#import "Platform/macOS/ZephyxApplication.h"
#import "Platform/macOS/ZephyxApplicationDelegate.h"

namespace zephyx {
namespace {

NSApplication* native() {
  return NSApplication.sharedApplication;
}

}  // namespace

// The first to ask for the shared application decides on its class.
MacApplication::MacApplication() {
  [ZephyxApplication sharedApplication];
}

MacApplication::~MacApplication() {
  if (!nativeDelegate_) return;
  [NSNotificationCenter.defaultCenter postNotificationName:NSApplicationWillTerminateNotification
                                                    object:native()];
  native().delegate = nil;
}

int MacApplication::run(ApplicationDelegate& delegate) {
  delegate_ = &delegate;
  @autoreleasepool {
    // Engines look for the application's delegate when they are made.
    nativeDelegate_ = [[ZephyxApplicationDelegate alloc] initWithHostDelegate:&delegate];
    native().delegate = nativeDelegate_;
    native().mainMenu = makeMainMenu();
    delegate.loadInterface();
    const auto made = livingWindows();
    // Plug-ins ask for the window here.
    if (!made.empty()) nativeDelegate_.mainFlutterWindow = made.front()->window();
  }
  [native() run];
  [nativeDelegate_ forgetHostDelegate];
  delegate_ = nullptr;
  return EXIT_SUCCESS;
}

void MacApplication::terminate() {
  [native() terminate:nil];
}

std::string MacApplication::bundleIdentifier() const {
  return utf8String(NSBundle.mainBundle.bundleIdentifier);
}

std::shared_ptr<Window> MacApplication::makeWindow(const WindowConfiguration& configuration) {
  auto window = std::make_shared<MacWindow>(configuration);
  std::erase_if(windows_, [](const auto& each) { return each.expired(); });
  windows_.push_back(window);
  return window;
}

std::vector<std::shared_ptr<MacWindow>> MacApplication::livingWindows() const {
  std::vector<std::shared_ptr<MacWindow>> living;
  for (const auto& each : windows_) {
    if (auto window = each.lock()) living.push_back(std::move(window));
  }
  return living;
}

std::vector<std::shared_ptr<Window>> MacApplication::windows() const {
  const auto living = livingWindows();
  return {living.begin(), living.end()};
}

std::shared_ptr<Window> MacApplication::keyWindow() const {
  NSWindow* key = native().keyWindow;
  for (const auto& each : livingWindows()) {
    if (key && each->window() == key) return each;
  }
  return nullptr;
}

bool MacApplication::hasVisibleSavePanel() const {
  for (NSWindow* window in native().windows) {
    if ([window isKindOfClass:NSSavePanel.class] && window.visible) return true;
  }
  return false;
}

bool MacApplication::isActive() const {
  return native().active;
}

// The newer `activate` gives way to the active application, which this must not.
void MacApplication::activateIgnoringOtherApps() {
  [native() activateIgnoringOtherApps:YES];
}

}  // namespace zephyx
