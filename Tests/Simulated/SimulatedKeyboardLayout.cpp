#include "Tests/Simulated/SimulatedKeyboardLayout.h"

namespace zephyx {
namespace {
constexpr std::pair<const char*, const char*> otherLetters[] = {
    {"ä", "Ä"}, {"ö", "Ö"}, {"ü", "Ü"}, {"я", "Я"}};
}

using Table = SimulatedKeyboardLayout::Table;

const Table SimulatedKeyboardLayout::us = {
    {0, "a"},  {1, "s"},  {2, "d"},  {3, "f"},  {4, "h"},  {5, "g"},  {6, "z"},
    {7, "x"},  {8, "c"},  {9, "v"},  {11, "b"}, {12, "q"}, {13, "w"}, {14, "e"},
    {15, "r"}, {16, "y"}, {17, "t"}, {18, "1"}, {19, "2"}, {27, "-"}, {31, "o"},
    {32, "u"}, {33, "["}, {34, "i"}, {35, "p"}, {37, "l"}, {38, "j"}, {39, "'"},
    {40, "k"}, {41, ";"}, {43, ","}, {45, "n"}, {46, "m"}, {47, "."}, {49, " "}};

const Table SimulatedKeyboardLayout::german = [] {
  auto table = us;
  for (const auto& [keyCode, character] :
       Table{{6, "y"}, {16, "z"}, {27, "ß"}, {33, "ü"}, {39, "ä"}, {41, "ö"}}) {
    table[keyCode] = character;
  }
  return table;
}();

std::string SimulatedKeyboardLayout::character(std::uint32_t keyCode) const {
  const auto found = table_->find(keyCode);
  return found == table_->end() ? "" : found->second;
}

std::string SimulatedKeyboardLayout::uppercased(const std::string& text) const {
  if (text == "ß") return "SS";  // has no single capital
  for (const auto& [lower, upper] : otherLetters) {
    if (text == lower) return upper;
  }
  const bool isLetter = text.size() == 1 && text[0] >= 'a' && text[0] <= 'z';
  return isLetter ? std::string(1, static_cast<char>(text[0] - 'a' + 'A')) : text;
}

std::string SimulatedKeyboardLayout::lowercased(const std::string& text) const {
  for (const auto& [lower, upper] : otherLetters) {
    if (text == upper) return lower;
  }
  const bool isLetter = text.size() == 1 && text[0] >= 'A' && text[0] <= 'Z';
  return isLetter ? std::string(1, static_cast<char>(text[0] - 'A' + 'a')) : text;
}

}  // namespace zephyx
