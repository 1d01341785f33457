#import "Platform/macOS/MacTemperatureSensors.h"

#import <Foundation/Foundation.h>
#import <IOKit/hidsystem/IOHIDEventSystemClient.h>
#import <IOKit/hidsystem/IOHIDServiceClient.h>
#include <dlfcn.h>

#import "Platform/macOS/OwnedRef.h"
#import "Platform/macOS/Strings.h"

namespace zephyx {
namespace {

constexpr int vendorPage = 0xff00;
constexpr int temperatureSensor = 5;
constexpr int64_t temperatureEvent = 15;
constexpr int32_t temperatureLevel = temperatureEvent << 16;

/// A function of the system, looked up by its name; null where there is none.
template <typename Function>
Function* systemFunction(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, name));
}

}  // namespace

/// Everything stays empty where one of the functions is missing.
class MacTemperatureSensors::Services {
 public:
  Services() {
    if (!copyProperty_ || !copyEvent_ || !getFloatValue_ || !create_ || !setMatching_ ||
        !copyServices_) {
      return;
    }
    client_ = OwnedRef<IOHIDEventSystemClientRef>::adopt(create_(kCFAllocatorDefault));
    if (!client_) return;
    NSDictionary* matching =
        @{@"PrimaryUsagePage" : @(vendorPage),
          @"PrimaryUsage" : @(temperatureSensor)};
    setMatching_(client_.get(), (__bridge CFDictionaryRef)matching);
    services_ = OwnedRef<CFArrayRef>::adopt(copyServices_(client_.get()));
  }

  std::vector<TemperatureReading> readings() const {
    std::vector<TemperatureReading> readings;
    const CFIndex count = services_ ? CFArrayGetCount(services_.get()) : 0;
    for (CFIndex i = 0; i < count; ++i) {
      auto* service = static_cast<IOHIDServiceClientRef>(
          const_cast<void*>(CFArrayGetValueAtIndex(services_.get(), i)));
      const auto product = OwnedRef<CFTypeRef>::adopt(copyProperty_(service, CFSTR("Product")));
      if (!product || CFGetTypeID(product.get()) != CFStringGetTypeID()) continue;
      const auto event = OwnedRef<CFTypeRef>::adopt(copyEvent_(service, temperatureEvent, 0, 0));
      if (!event) continue;
      readings.push_back({utf8String((__bridge NSString*)product.get()),
                          getFloatValue_(event.get(), temperatureLevel)});
    }
    return readings;
  }

 private:
  using CopyProperty = CFTypeRef(IOHIDServiceClientRef, CFStringRef);
  using CopyEvent = CFTypeRef(IOHIDServiceClientRef, int64_t type, int32_t options,
                              int64_t timestamp);
  using GetFloatValue = double(CFTypeRef event, int32_t field);
  using Create = IOHIDEventSystemClientRef(CFAllocatorRef);
  using SetMatching = int(IOHIDEventSystemClientRef, CFDictionaryRef);
  using CopyServices = CFArrayRef(IOHIDEventSystemClientRef);

  CopyProperty* const copyProperty_ =
      systemFunction<CopyProperty>("IOHIDServiceClientCopyProperty");
  CopyEvent* const copyEvent_ = systemFunction<CopyEvent>("IOHIDServiceClientCopyEvent");
  GetFloatValue* const getFloatValue_ = systemFunction<GetFloatValue>("IOHIDEventGetFloatValue");
  Create* const create_ = systemFunction<Create>("IOHIDEventSystemClientCreate");
  SetMatching* const setMatching_ =
      systemFunction<SetMatching>("IOHIDEventSystemClientSetMatching");
  CopyServices* const copyServices_ =
      systemFunction<CopyServices>("IOHIDEventSystemClientCopyServices");
  OwnedRef<IOHIDEventSystemClientRef> client_;
  OwnedRef<CFArrayRef> services_;
};

MacTemperatureSensors::MacTemperatureSensors() = default;
MacTemperatureSensors::~MacTemperatureSensors() = default;

std::vector<TemperatureReading> MacTemperatureSensors::readings() {
  @autoreleasepool {
    if (!services_) services_ = std::make_unique<Services>();
    return services_->readings();
  }
}

}  // namespace zephyx
