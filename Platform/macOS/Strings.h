#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// Never nil. A byte that is no part of well-formed UTF-8 becomes U+FFFD.
NSString* nsString(std::string_view utf8);

/// Nil gives an empty text; half a surrogate pair, which UTF-8 cannot hold, is replaced.
std::string utf8String(NSString* text);

/// A copy; never nil.
NSData* nsData(BytesView bytes);

/// A copy; nil gives no bytes.
Bytes bytes(NSData* data);

}  // namespace zephyx
