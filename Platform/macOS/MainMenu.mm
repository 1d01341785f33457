#import "Platform/macOS/MainMenu.h"

namespace zephyx {
namespace {

constexpr NSEventModifierFlags command = NSEventModifierFlagCommand;
constexpr NSEventModifierFlags shiftCommand = NSEventModifierFlagShift | command;
constexpr NSEventModifierFlags optionShiftCommand = NSEventModifierFlagOption | shiftCommand;

void addItem(NSMenu* menu, NSString* title, SEL action, NSString* key, NSEventModifierFlags mask) {
  // Without a target the action goes to whatever has the keyboard.
  [menu addItemWithTitle:title action:action keyEquivalent:key].keyEquivalentModifierMask = mask;
}

void addSubmenu(NSMenu* bar, NSMenu* submenu) {
  [bar addItemWithTitle:submenu.title action:nil keyEquivalent:@""].submenu = submenu;
}

NSMenu* makeApplicationMenu() {
  auto* menu = [[NSMenu alloc] initWithTitle:@"Zephyx"];
  addItem(menu, @"Hide Zephyx", @selector(hide:), @"h", command);
  return menu;
}

NSMenu* makeEditMenu() {
  auto* menu = [[NSMenu alloc] initWithTitle:@"Edit"];
  // No class of AppKit declares these two: the window passes them on to its undo manager.
  addItem(menu, @"Undo", NSSelectorFromString(@"undo:"), @"z", command);
  addItem(menu, @"Redo", NSSelectorFromString(@"redo:"), @"z", shiftCommand);
  [menu addItem:NSMenuItem.separatorItem];
  addItem(menu, @"Cut", @selector(cut:), @"x", command);
  addItem(menu, @"Copy", @selector(copy:), @"c", command);
  addItem(menu, @"Paste", @selector(paste:), @"v", command);
  addItem(menu, @"Paste and Match Style", @selector(pasteAsPlainText:), @"v", optionShiftCommand);
  addItem(menu, @"Delete", @selector(delete:), @"", 0);
  addItem(menu, @"Select All", @selector(selectAll:), @"a", command);
  return menu;
}

NSMenu* makeWindowMenu() {
  auto* menu = [[NSMenu alloc] initWithTitle:@"Window"];
  addItem(menu, @"Close", @selector(performClose:), @"w", command);
  return menu;
}

}  // namespace

NSMenu* makeMainMenu() {
  auto* bar = [[NSMenu alloc] initWithTitle:@"Main Menu"];
  addSubmenu(bar, makeApplicationMenu());
  addSubmenu(bar, makeEditMenu());
  addSubmenu(bar, makeWindowMenu());
  return bar;
}

}  // namespace zephyx
