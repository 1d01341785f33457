#import "Platform/macOS/MacUserDefaults.h"

#import <Foundation/Foundation.h>

#import "Platform/macOS/Strings.h"

namespace zephyx {
namespace {

// Not -stringForKey:, which makes a text of a number as well.
id value(const std::string& key) {
  return [NSUserDefaults.standardUserDefaults objectForKey:nsString(key)];
}

void setValue(const std::string& key, id value) {
  [NSUserDefaults.standardUserDefaults setObject:value forKey:nsString(key)];
}

}  // namespace

std::optional<Bytes> MacUserDefaults::data(const std::string& key) const {
  id found = value(key);
  if (![found isKindOfClass:NSData.class]) return std::nullopt;
  return bytes(static_cast<NSData*>(found));
}

std::optional<std::string> MacUserDefaults::string(const std::string& key) const {
  id found = value(key);
  if (![found isKindOfClass:NSString.class]) return std::nullopt;
  return utf8String(static_cast<NSString*>(found));
}

void MacUserDefaults::setData(const std::string& key, BytesView value) {
  setValue(key, nsData(value));
}

void MacUserDefaults::setString(const std::string& key, const std::string& value) {
  setValue(key, nsString(value));
}

void MacUserDefaults::removeObject(const std::string& key) {
  [NSUserDefaults.standardUserDefaults removeObjectForKey:nsString(key)];
}

}  // namespace zephyx
