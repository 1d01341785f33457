#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "Platform/Linux/X11.h"

namespace zephyx {

/// The gamma ramps of a display's outputs, read and set by another program than the one under test.
class DesktopRamps {
 public:
  /// Red, green and blue.
  using Ramp = std::array<std::vector<std::uint16_t>, 3>;

  /// On the display that this process lives on.
  DesktopRamps();

  /// The names of the outputs that show a picture.
  std::vector<std::string> outputs();
  std::uint32_t crtcOf(const std::string& output);
  Ramp ramp(const std::string& output);
  void setRamp(const std::string& output, const Ramp& ramp);
  /// As the driver of a panel in the computer's case does.
  void sayIsPanel(const std::string& output);

  /// What goes in comes out, at this share of the full strength.
  static Ramp linear(double red, double green, double blue, std::size_t size = 256);
  /// The greatest difference between two levels at the same place.
  static int distance(const Ramp& a, const Ramp& b);

 private:
  struct Output {
    std::uint32_t id = 0;
    std::uint32_t crtc = 0;
    std::string name;
  };
  std::vector<Output> lit();
  Output find(const std::string& name);

  X11Connection connection_;
};

}  // namespace zephyx
