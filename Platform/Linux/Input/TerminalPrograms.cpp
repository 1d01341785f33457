#include "Platform/Linux/Input/TerminalPrograms.h"

#include <QtCore/QString>
#include <algorithm>
#include <iterator>
#include <string_view>

namespace zephyx {
namespace {

constexpr std::string_view shiftInsert[] = {
    "xterm", "uxterm", "koi8rxterm", "urxvt", "rxvt", "rxvt-unicode", "aterm", "eterm", "mlterm",
};

// VTE, then Qt, then others.
// clang-format off
constexpr std::string_view controlShift[] = {
    "gnome-terminal", "gnome-terminal-server", "org.gnome.terminal", "kgx", "org.gnome.console",
    "org.gnome.ptyxis", "xfce4-terminal", "mate-terminal", "lxterminal", "terminator", "tilix",
    "guake", "tilda", "sakura", "roxterm", "termite", "com.raggesilver.blackbox",
    "io.elementary.terminal",
    "konsole", "org.kde.konsole", "yakuake", "org.kde.yakuake", "qterminal", "deepin-terminal",
    "cool-retro-term", "contour",
    "alacritty", "kitty", "foot", "footclient", "wezterm", "org.wezfurlong.wezterm",
    "com.mitchellh.ghostty", "st", "st-256color", "terminology", "hyper", "tabby",
};
// clang-format on

template <std::size_t count>
bool contains(const std::string_view (&names)[count], std::string_view name) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

}  // namespace

PasteStyle pasteStyleOf(const std::string& windowClass) {
  const auto name = QString::fromStdString(windowClass).toLower().toStdString();
  if (contains(shiftInsert, name)) return PasteStyle::shiftInsert;
  if (contains(controlShift, name)) return PasteStyle::controlShift;
  return PasteStyle::control;
}

}  // namespace zephyx
