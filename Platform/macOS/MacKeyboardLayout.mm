#import "Platform/macOS/MacKeyboardLayout.h"

#import <Carbon/Carbon.h>
#import <Foundation/Foundation.h>

#include <array>

#import "Platform/macOS/OwnedRef.h"
#import "Platform/macOS/Strings.h"

namespace zephyx {

std::string MacKeyboardLayout::character(std::uint32_t keyCode) const {
  const auto source = OwnedRef<TISInputSourceRef>::adopt(TISCopyCurrentKeyboardLayoutInputSource());
  if (!source) return {};
  // Not a copy: belongs to the source.
  const auto* data = static_cast<CFDataRef>(
      TISGetInputSourceProperty(source.get(), kTISPropertyUnicodeKeyLayoutData));
  if (!data) return {};
  const auto* layout = reinterpret_cast<const UCKeyboardLayout*>(CFDataGetBytePtr(data));

  UInt32 deadKeyState = 0;
  std::array<UniChar, 4> characters{};
  UniCharCount length = 0;
  const OSStatus status =
      UCKeyTranslate(layout, static_cast<UInt16>(keyCode), kUCKeyActionDown, 0, LMGetKbdType(), 0,
                     &deadKeyState, characters.size(), &length, characters.data());
  if (status != noErr || length == 0) return {};
  return utf8String([NSString stringWithCharacters:characters.data() length:length]);
}

// These two mappings of the system take no locale into account.
std::string MacKeyboardLayout::uppercased(const std::string& text) const {
  return utf8String(nsString(text).uppercaseString);
}

std::string MacKeyboardLayout::lowercased(const std::string& text) const {
  return utf8String(nsString(text).lowercaseString);
}

}  // namespace zephyx
