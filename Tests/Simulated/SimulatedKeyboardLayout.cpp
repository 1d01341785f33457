#include "Tests/Simulated/SimulatedKeyboardLayout.h"

#include <utility>
#include <vector>

namespace zephyx {

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

namespace {

// Case pairs of the letters that the tables print; "ß" has no single capital and grows instead.
const std::vector<std::pair<std::string, std::string>>& casePairs() {
  static const auto pairs = [] {
    std::vector<std::pair<std::string, std::string>> made = {
        {"ä", "Ä"}, {"ö", "Ö"}, {"ü", "Ü"}, {"ß", "SS"}};
    for (char c = 'a'; c <= 'z'; ++c) {
      made.emplace_back(std::string(1, c), std::string(1, static_cast<char>(c - 'a' + 'A')));
    }
    return made;
  }();
  return pairs;
}

std::string mapped(const std::string& text, bool toUpper) {
  for (const auto& [lower, upper] : casePairs()) {
    if (toUpper && text == lower) return upper;
    if (!toUpper && text == upper && upper != "SS") return lower;
  }
  return text;
}

}  // namespace

std::string SimulatedKeyboardLayout::character(std::uint32_t keyCode) const {
  const auto found = table_->find(keyCode);
  return found == table_->end() ? "" : found->second;
}

std::string SimulatedKeyboardLayout::uppercased(const std::string& text) const {
  return mapped(text, true);
}

std::string SimulatedKeyboardLayout::lowercased(const std::string& text) const {
  return mapped(text, false);
}

}  // namespace zephyx
