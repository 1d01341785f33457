#pragma once

#include <xcb/randr.h>

#include <optional>
#include <vector>

#include "Platform/Displays.h"
#include "Platform/Linux/Displays/GammaRamp.h"
#include "Platform/Linux/X11.h"

namespace zephyx {

/// What the X server makes pictures with, one for each display or group of displays that show the
/// same; each has a gamma ramp, whether it is in use or not. One thread.
class RandrCrtcs {
 public:
  /// Borrows the connection. Null finds nothing.
  explicit RandrCrtcs(xcb_connection_t* connection);

  /// Those in use. One that shows its picture on a built-in panel too is built in.
  std::vector<Display> inUse();

  /// A ramp that nobody has set yet reads as identity. Nothing when there is none.
  std::optional<GammaRamp> ramp(xcb_randr_crtc_t crtc);
  bool setRamp(xcb_randr_crtc_t crtc, const GammaRamp& ramp);

 private:
  bool isBuiltin(xcb_randr_output_t output);

  std::optional<X11Connection> connection_;
};

}  // namespace zephyx
