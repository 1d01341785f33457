#import "Platform/macOS/MacDisplays.h"

#import <CoreGraphics/CoreGraphics.h>
#import <IOKit/IOKit.h>
#include <dlfcn.h>

#include <array>
#include <utility>

#import "Platform/macOS/OwnedHandle.h"
#import "Platform/macOS/OwnedRef.h"

namespace zephyx {
namespace {

constexpr std::uint32_t maximumDisplays = 16;

using IOObject = OwnedHandle<io_object_t, IOObjectRelease>;
using CreateWithService = CFTypeRef (*)(CFAllocatorRef, io_service_t);
using WriteI2C = IOReturn (*)(CFTypeRef, std::uint32_t, std::uint32_t, void*, std::uint32_t);

/// Null when the system does not have it.
template <typename Function>
Function privateFunction(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, name));
}

class AVService final : public DisplayChannel {
 public:
  AVService(OwnedRef<CFTypeRef> service, WriteI2C write)
      : service_(std::move(service)), write_(write) {}

  std::int32_t writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                        BytesView bytes) override {
    Bytes message(bytes.begin(), bytes.end());
    return write_(service_.get(), chipAddress, dataAddress, message.data(),
                  static_cast<std::uint32_t>(message.size()));
  }

 private:
  OwnedRef<CFTypeRef> service_;
  const WriteI2C write_;
};

bool isExternal(io_service_t entry) {
  const auto location = OwnedRef<CFTypeRef>::adopt(
      IORegistryEntryCreateCFProperty(entry, CFSTR("Location"), kCFAllocatorDefault, 0));
  return location && CFEqual(location.get(), CFSTR("External"));
}

}  // namespace

std::vector<std::shared_ptr<DisplayChannel>> MacDisplays::externalChannels() {
  static const auto create = privateFunction<CreateWithService>("IOAVServiceCreateWithService");
  static const auto write = privateFunction<WriteI2C>("IOAVServiceWriteI2C");
  if (!create || !write) return {};
  IOObject entries;
  // Takes the dictionary over.
  if (IOServiceGetMatchingServices(kIOMainPortDefault, IOServiceMatching("DCPAVServiceProxy"),
                                   entries.out()) != KERN_SUCCESS) {
    return {};
  }
  std::vector<std::shared_ptr<DisplayChannel>> channels;
  while (const IOObject entry{IOIteratorNext(entries.get())}) {
    if (!isExternal(entry.get())) continue;
    auto service = OwnedRef<CFTypeRef>::adopt(create(kCFAllocatorDefault, entry.get()));
    if (service) channels.push_back(std::make_shared<AVService>(std::move(service), write));
  }
  return channels;
}

std::vector<Display> MacDisplays::onlineDisplays() {
  std::array<CGDirectDisplayID, maximumDisplays> ids{};
  std::uint32_t count = 0;
  if (CGGetOnlineDisplayList(maximumDisplays, ids.data(), &count) != kCGErrorSuccess) return {};
  std::vector<Display> displays;
  for (std::uint32_t i = 0; i < count; ++i) {
    displays.push_back({ids[i], CGDisplayIsBuiltin(ids[i]) != 0});
  }
  return displays;
}

bool MacDisplays::setTransferMaximum(std::uint32_t display, double maximum) {
  const auto top = static_cast<CGGammaValue>(maximum);
  return CGSetDisplayTransferByFormula(display, 0, top, 1, 0, top, 1, 0, top, 1) == kCGErrorSuccess;
}

}  // namespace zephyx
