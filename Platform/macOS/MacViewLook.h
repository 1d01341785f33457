#pragma once

#import <AppKit/AppKit.h>

#include "Platform/TextStyle.h"

namespace zephyx {

/// The host's colours, fonts and symbols in AppKit's terms. Main thread.
namespace viewLook {

/// A colour with an alpha of its own is that of the current drawing appearance and stays as it is;
/// all others follow the appearance.
NSColor* color(Color color);
NSFont* font(const Font& font);
NSFontWeight weight(FontWeight weight);
NSLineBreakMode lineBreakMode(TextTruncation truncation);
/// By the direction of the user interface, whatever the text's own is.
NSTextAlignment alignment(TextAlignment alignment, bool isMirrored);
/// Nil for a name that the system does not know.
NSImage* symbolImage(const SystemSymbol& symbol, NSString* description);
NSImageSymbolConfiguration* symbolConfiguration(const SystemSymbol& symbol);

}  // namespace viewLook

}  // namespace zephyx
