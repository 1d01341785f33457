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

const Table SimulatedKeyboardLayout::russian = {
    {0, "ф"},  {1, "ы"},  {2, "в"},  {3, "а"},  {4, "р"},  {5, "п"},  {6, "я"},  {7, "ч"},
    {8, "с"},  {9, "м"},  {11, "и"}, {12, "й"}, {13, "ц"}, {14, "у"}, {15, "к"}, {16, "н"},
    {17, "е"}, {18, "1"}, {19, "2"}, {31, "щ"}, {32, "г"}, {34, "ш"}, {35, "з"}, {37, "д"},
    {38, "о"}, {40, "л"}, {43, "б"}, {45, "т"}, {46, "ь"}, {49, " "}};

namespace {

// Case pairs of the letters that the tables print; "ß" has no single capital and grows instead.
const std::vector<std::pair<std::string, std::string>>& casePairs() {
  static const auto pairs = [] {
    std::vector<std::pair<std::string, std::string>> made = {
        {"ä", "Ä"}, {"ö", "Ö"}, {"ü", "Ü"}, {"ß", "SS"}};
    for (char c = 'a'; c <= 'z'; ++c) {
      made.emplace_back(std::string(1, c), std::string(1, static_cast<char>(c - 'a' + 'A')));
    }
    const std::string lower = "абвгдежзийклмнопрстуфхцчшщъыьэюя";
    const std::string upper = "АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯ";
    for (std::size_t i = 0; i < lower.size(); i += 2) {
      made.emplace_back(lower.substr(i, 2), upper.substr(i, 2));
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
