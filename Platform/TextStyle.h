#pragma once

#include <string>

#include "Platform/Color.h"

namespace zephyx {

enum class FontWeight { regular, medium, semibold, bold };

/// The system's font for user interfaces.
struct Font {
  double size = 13;  ///< in points
  FontWeight weight = FontWeight::regular;
  bool monospacedDigits = false;
  bool operator==(const Font&) const = default;
};

/// `leading` is where lines begin in the user's language.
enum class TextAlignment { leading, center, trailing };

/// Where an ellipsis stands for what does not fit.
enum class TextTruncation { end, middle };

/// How one line of text is drawn. It is centred vertically in its rectangle.
struct TextStyle {
  Font font;
  Color color;
  TextAlignment alignment = TextAlignment::leading;
  TextTruncation truncation = TextTruncation::end;
  bool operator==(const TextStyle&) const = default;
};

/// A drawing that the system has under a name, in one colour.
struct SystemSymbol {
  std::string name;  ///< for instance "moon.fill"
  double pointSize = 13;
  FontWeight weight = FontWeight::regular;
  Color tint;
  bool operator==(const SystemSymbol&) const = default;
};

}  // namespace zephyx
