#include "Platform/Linux/Workspace/LinuxRunningApplication.h"

#include <QtGui/QImage>
#include <cstring>

#include "Platform/Linux/Pictures/LinuxImages.h"
#include "Platform/Linux/Workspace/IconTheme.h"

namespace zephyx {
namespace {

constexpr std::uint32_t preferredIconSize = 256;

/// The largest picture up to the preferred size, else the smallest one.
QImage chooseIcon(const std::vector<std::uint32_t>& icons) {
  const std::uint32_t* best = nullptr;
  std::uint32_t bestWidth = 0;
  std::uint32_t bestHeight = 0;
  for (std::size_t i = 0; i + 2 < icons.size();) {
    const auto width = icons[i];
    const auto height = icons[i + 1];
    const auto pixels = std::uint64_t{width} * height;
    // Programs have been seen to announce more than they send.
    if (pixels == 0 || pixels > icons.size() - i - 2) break;
    const bool fits = width <= preferredIconSize;
    const bool bestFits = bestWidth <= preferredIconSize;
    if (!best || (fits ? !bestFits || width > bestWidth : !bestFits && width < bestWidth)) {
      best = &icons[i + 2];
      bestWidth = width;
      bestHeight = height;
    }
    i += 2 + pixels;
  }
  if (!best) return {};
  QImage image(static_cast<int>(bestWidth), static_cast<int>(bestHeight), QImage::Format_ARGB32);
  if (image.isNull()) return {};
  // 32-bit pixels: no padding between the lines.
  std::memcpy(image.bits(), best, std::size_t{bestWidth} * bestHeight * 4);
  return image;
}

}  // namespace

LinuxRunningApplication::LinuxRunningApplication(std::shared_ptr<WindowServer> windows,
                                                 Description description)
    : windows_(std::move(windows)), description_(std::move(description)) {}

std::shared_ptr<Image> LinuxRunningApplication::icon() const {
  auto image =
      chooseIcon(windows_->iconsOf({description_.iconWindow, description_.target.process}));
  if (image.isNull()) image = loadApplicationIcon(description_.themeIcon);
  return LinuxImages::fromQImage(std::move(image));
}

bool LinuxRunningApplication::isActive() const {
  return windows_->isInFront(description_.target);
}

bool LinuxRunningApplication::activateIgnoringOtherApps() {
  return windows_->activate(description_.target);
}

}  // namespace zephyx
