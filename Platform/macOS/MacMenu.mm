#import "Platform/macOS/MacMenu.h"

#include <utility>

#import "Platform/macOS/MacView.h"
#import "Platform/macOS/Strings.h"

@interface ZephyxMenuDelegate : NSObject <NSMenuDelegate>
- (instancetype)initWithMenu:(std::weak_ptr<zephyx::Menu>)menu;
@end

@implementation ZephyxMenuDelegate {
  std::weak_ptr<zephyx::Menu> _menu;
}

- (instancetype)initWithMenu:(std::weak_ptr<zephyx::Menu>)menu {
  self = [super init];
  if (self) _menu = std::move(menu);
  return self;
}

- (void)menuNeedsUpdate:(NSMenu*)menu {
  [self tell:&zephyx::MenuDelegate::menuNeedsUpdate];
}

- (void)menuWillOpen:(NSMenu*)menu {
  [self tell:&zephyx::MenuDelegate::menuWillOpen];
}

- (void)menuDidClose:(NSMenu*)menu {
  [self tell:&zephyx::MenuDelegate::menuDidClose];
}

- (void)tell:(void (zephyx::MenuDelegate::*)(zephyx::Menu&))what {
  const auto menu = _menu.lock();
  if (menu && menu->delegate()) (menu->delegate()->*what)(*menu);
}
@end

@interface ZephyxMenuRow : NSObject
- (instancetype)initWithItem:(std::weak_ptr<zephyx::MenuItem>)item;
- (void)choose:(id)sender;
@end

@implementation ZephyxMenuRow {
  std::weak_ptr<zephyx::MenuItem> _item;
}

- (instancetype)initWithItem:(std::weak_ptr<zephyx::MenuItem>)item {
  self = [super init];
  if (self) _item = std::move(item);
  return self;
}

// When the menu has gone: actions bring windows and the application to the front, and doing that
// while the menu's window fades away can leave it behind, unseen, where it catches clicks.
- (void)choose:(id)sender {
  [self performSelector:@selector(perform)
             withObject:nil
             afterDelay:0
                inModes:@[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode ]];
}

- (void)perform {
  if (const auto item = _item.lock()) item->perform();
}
@end

namespace zephyx {

MacMenu::MacMenu(std::shared_ptr<Menu> menu)
    : menu_(std::move(menu)),
      delegate_([[ZephyxMenuDelegate alloc] initWithMenu:menu_]),
      native_([[NSMenu alloc] initWithTitle:@""]) {
  native_.delegate = delegate_;
  native_.autoenablesItems = NO;  // the data say which rows can be chosen
  for (const auto& item : menu_->items()) addRow(item);
}

MacMenu::~MacMenu() {
  for (const auto& item : menu_->items()) item->onChange = nullptr;
  native_.delegate = nil;
}

void MacMenu::addRow(const std::shared_ptr<MenuItem>& item) {
  const auto* data = item.get();  // owns what is put into it here
  if (item->isSeparator()) {
    NSMenuItem* separator = NSMenuItem.separatorItem;
    separator.hidden = data->properties().isHidden;
    item->onChange = [=] { separator.hidden = data->properties().isHidden; };
    [native_ addItem:separator];
    return;
  }
  auto* row = [[ZephyxMenuRow alloc] initWithItem:item];
  rows_.push_back(row);
  auto* native = [[NSMenuItem alloc] initWithTitle:@"" action:@selector(choose:) keyEquivalent:@""];
  native.target = row;
  if (item->view()) native.view = makeNativeView(item->view());
  show(*data, native);
  item->onChange = [=] { show(*data, native); };
  [native_ addItem:native];
}

void MacMenu::show(const MenuItem& item, NSMenuItem* native) {
  const auto& properties = item.properties();
  native.title = nsString(properties.title);
  native.keyEquivalent = nsString(properties.keyEquivalent);
  native.keyEquivalentModifierMask = properties.keyEquivalentModifierMask;
  native.state = properties.isOn ? NSControlStateValueOn : NSControlStateValueOff;
  native.hidden = properties.isHidden;
  native.enabled = properties.isEnabled || item.view();
  native.toolTip = properties.toolTip.empty() ? nil : nsString(properties.toolTip);
}

}  // namespace zephyx
