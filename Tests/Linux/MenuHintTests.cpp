#include <gtest/gtest.h>

#include "Platform/Linux/Menus/LinuxMenu.h"

namespace zephyx {
namespace {

TEST(MenuHint, NamesModifiersAndKeysAsTheKeyboardHereDoes) {
  using namespace eventModifier;
  const std::tuple<const char*, std::uint64_t, const char*> cases[] = {
      {"", command, ""},          {"e", command | eventModifier::shift, "Shift+Super+E"},
      {",", command, "Super+,"},  {"m", control | option | command, "Ctrl+Alt+Super+M"},
      {"ñ", option, "Alt+Ñ"},     {" ", command | eventModifier::shift, "Shift+Super+Space"},
      {"\r", 0, "Return"},        {"\xEF\x9C\x80", control, "Ctrl+Up"},
      {"\xEF\x9C\x8F", 0, "F12"},
  };
  for (const auto& [key, mask, hint] : cases) {
    EXPECT_EQ(LinuxMenu::shortcutHint({.keyEquivalent = key, .keyEquivalentModifierMask = mask}),
              hint);
  }
  MenuItem::Properties row{.keyEquivalent = "m", .isEnabled = false, .toolTip = "Not found."};
  EXPECT_EQ(LinuxMenu::shortcutHint(row), "Not found.");
  row.toolTip = std::string(100, 'x');
  EXPECT_EQ(LinuxMenu::shortcutHint(row), "Super+M") << "too long for a menu";
}

}  // namespace
}  // namespace zephyx
