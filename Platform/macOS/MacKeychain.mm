#import "Platform/macOS/MacKeychain.h"

#import <Foundation/Foundation.h>
#import <Security/Security.h>

#import "Platform/macOS/OwnedRef.h"
#import "Platform/macOS/Strings.h"

namespace zephyx {
namespace {

NSMutableDictionary* itemOf(const std::string& service) {
  return [@{
    (__bridge id)kSecClass : (__bridge id)kSecClassGenericPassword,
    (__bridge id)kSecAttrService : nsString(service),
  } mutableCopy];
}

}  // namespace

std::optional<Bytes> MacKeychain::password(const std::string& service) {
  @autoreleasepool {
    NSMutableDictionary* query = itemOf(service);
    query[(__bridge id)kSecReturnData] = @YES;
    query[(__bridge id)kSecMatchLimit] = (__bridge id)kSecMatchLimitOne;
    CFTypeRef found = nullptr;
    // May ask the user.
    if (SecItemCopyMatching((__bridge CFDictionaryRef)query, &found) != errSecSuccess) {
      return std::nullopt;
    }
    const auto owned = OwnedRef<CFTypeRef>::adopt(found);
    if (!found || CFGetTypeID(found) != CFDataGetTypeID()) return std::nullopt;
    return bytes((__bridge NSData*)found);
  }
}

bool MacKeychain::setPassword(const std::string& service, BytesView secret) {
  @autoreleasepool {
    // Adding does not replace.
    if (!deletePassword(service)) return false;
    NSMutableDictionary* item = itemOf(service);
    item[(__bridge id)kSecValueData] = nsData(secret);
    return SecItemAdd((__bridge CFDictionaryRef)item, nullptr) == errSecSuccess;
  }
}

bool MacKeychain::deletePassword(const std::string& service) {
  @autoreleasepool {
    const OSStatus status = SecItemDelete((__bridge CFDictionaryRef)itemOf(service));
    return status == errSecSuccess || status == errSecItemNotFound;
  }
}

}  // namespace zephyx
