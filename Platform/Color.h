#pragma once

namespace zephyx {

/// A colour by its meaning. The platform finds the pixels for the appearance, dark or light, in
/// which it is drawn; white and black are the same in both.
struct Color {
  enum class Name {
    label,
    secondaryLabel,
    tertiaryLabel,  ///< also the track of gauges
    systemGreen,
    systemYellow,
    systemRed,
    accent,
    hoverBackground,
    selectionBackground,
    white,
    black,
  };

  Name name = Name::label;
  double alpha = 1;  ///< multiplies the named colour's own

  constexpr Color withAlpha(double factor) const { return {name, alpha * factor}; }
  bool operator==(const Color&) const = default;
};

namespace color {
inline constexpr Color label{Color::Name::label};
inline constexpr Color secondaryLabel{Color::Name::secondaryLabel};
inline constexpr Color tertiaryLabel{Color::Name::tertiaryLabel};
inline constexpr Color systemGreen{Color::Name::systemGreen};
inline constexpr Color systemYellow{Color::Name::systemYellow};
inline constexpr Color systemRed{Color::Name::systemRed};
inline constexpr Color accent{Color::Name::accent};
inline constexpr Color hoverBackground{Color::Name::hoverBackground};
inline constexpr Color selectionBackground{Color::Name::selectionBackground};
inline constexpr Color white{Color::Name::white};
inline constexpr Color black{Color::Name::black};
}  // namespace color

}  // namespace zephyx
