#import "Platform/macOS/MacUserDefaults.h"

#import <Foundation/Foundation.h>

#import "Platform/macOS/Strings.h"

namespace zephyx {
namespace {

// Not -stringForKey:, which makes a text of a number as well.
id value(const std::string& key) {
  return [NSUserDefaults.standardUserDefaults objectForKey:nsString(key)];
}

// A boolean is a number to Objective-C.
bool isBoolean(id value) {
  return value && CFGetTypeID((__bridge CFTypeRef)value) == CFBooleanGetTypeID();
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

std::optional<bool> MacUserDefaults::boolean(const std::string& key) const {
  id found = value(key);
  if (!isBoolean(found)) return std::nullopt;
  return static_cast<NSNumber*>(found).boolValue;
}

std::optional<double> MacUserDefaults::number(const std::string& key) const {
  id found = value(key);
  if (![found isKindOfClass:NSNumber.class] || isBoolean(found)) return std::nullopt;
  return static_cast<NSNumber*>(found).doubleValue;
}

void MacUserDefaults::setData(const std::string& key, BytesView value) {
  setValue(key, nsData(value));
}

void MacUserDefaults::setString(const std::string& key, const std::string& value) {
  setValue(key, nsString(value));
}

void MacUserDefaults::setBoolean(const std::string& key, bool value) {
  setValue(key, value ? @YES : @NO);
}

void MacUserDefaults::setNumber(const std::string& key, double value) {
  setValue(key, @(value));
}

void MacUserDefaults::removeObject(const std::string& key) {
  [NSUserDefaults.standardUserDefaults removeObjectForKey:nsString(key)];
}

}  // namespace zephyx
