#include "Tests/Runner/RandomSessionLog.h"

#include <algorithm>

namespace zephyx {

std::string RandomSessionLog::log() {
  std::string text;
  for (auto lines = pick(12); lines > 0; --lines) {
    text += line() + oneOf({"\n", "\n", "\n", "\r\n", "\n\n"});
  }
  if (pick(3) == 0 && !text.empty()) text.pop_back();
  if (pick(8) == 0) {
    const auto* wrong = oneOf({"\x80", "\xC3", "\xE2\x82", "\xF0\x9F\x98", "\xED\xA0\x80",
                               "\xC0\xAF", "\xF4\x90\x80\x80", "\xFF", "\xE2\x82\x28"});
    const auto size = static_cast<unsigned>(text.size());
    const unsigned places[] = {0, size, pick(size + 1)};
    text.insert(places[pick(3)], wrong);
  }
  return text;
}

std::string RandomSessionLog::line() {
  auto text = entry();
  const auto size = static_cast<unsigned>(text.size());
  switch (pick(14)) {
    case 0:
      return oneOf({"", " ", "\"usage\"", "[\"usage\"]", "null", "{\"usage\":{}}", "{}\t", "{"});
    case 1:
      return text + oneOf({" x", "{}", ",", "\xC2\xA0", " null", "}", "\"usage\""});
    case 2:
      return text.substr(0, pick(size));
    case 3:
      text[pick(size)] = static_cast<char>(1 + pick(126));
      return text;
    case 4:
      return text.insert(pick(size), oneOf({"\\", "\"", "\x01", "\t", "\xE2\x82\xAC", ","}));
    case 5:
      return oneOf({" ", "\t", "\r"}) + text + oneOf({" ", "\t", "\r"});
    default:
      return text;
  }
}

std::string RandomSessionLog::entry() {
  const auto* time = oneOf({"\"2025-06-01T12:00:00.500Z\"", "\"2025-06-01T12:00:01Z\"",
                            "\"2025-06-01T14:00:01+02:00\"", "\"2025\\u002d06-02T12:00:00Z\"",
                            "\"2025-06-01T12:00:02Z\"", "\"2025-06-01T12:00:00.499Z\"",
                            "\"2025-06-01\"", "1748779300", "null", "\"2025-06-01T12:00:00Z\""});
  std::vector<std::string> members = {key("timestamp") + time, key("message") + message(),
                                      key("text") + filler()};
  if (pick(20) == 0) members.push_back(key("message") + oneOf({"5", "{}", "\"usage\""}));
  if (pick(20) == 0) members.push_back(key("timestamp") + oneOf({"\"2031-01-01T00:00:00Z\"", "1"}));
  return object(std::move(members));
}

std::string RandomSessionLog::message() {
  const auto* model = oneOf({"\"a\"", "\"b\"", "\"\\u0061\"",
                             "\"gr\xC3\xB6\xC3\x9F"
                             "e\"",
                             "\"gr\\u00f6\\u00dfe\"", "\"a\\u0000b\"", "\"<synthetic>\"",
                             "\"\\u003csynthetic>\"", "\"\"", "7", "null"});
  std::vector<std::string> members = {key("model") + model, key("usage") + usage(),
                                      key("content") + filler()};
  if (pick(15) == 0) members.push_back(key("usage") + oneOf({"3", "{\"input_tokens\":9}", "[]"}));
  if (pick(15) == 0) members.push_back(key("model") + oneOf({"\"c\"", "[]"}));
  return object(std::move(members));
}

std::string RandomSessionLog::usage() {
  std::vector<std::string> members;
  for (const auto* name : {"input_tokens", "output_tokens", "cache_read_input_tokens",
                           "cache_creation_input_tokens", "input_tokens", "other"}) {
    if (pick(5) == 0) continue;
    const auto* odd = oneOf({"1.0",
                             "1e3",
                             "-0",
                             "01",
                             "+1",
                             "1.",
                             ".5",
                             "-",
                             "1e",
                             "0x1",
                             "NaN",
                             "Infinity",
                             "1e400",
                             "-1E-400",
                             "9223372036854775808",
                             "18446744073709551616",
                             "-9223372036854775809",
                             "123456789012345678901234567890",
                             "1e99999",
                             "0.1234567890123456789012345",
                             "null",
                             "\"5\"",
                             "true",
                             "[1]",
                             "{\"a\":1}",
                             "tru",
                             "",
                             "1 2"});
    members.push_back(key(name) + (pick(30) == 0 ? odd : std::to_string(pick(100'000)).c_str()));
    if (pick(9) == 0) members.back() = key(name) + "-" + std::to_string(1 + pick(1000));
  }
  return object(std::move(members));
}

std::string RandomSessionLog::filler() {
  if (pick(60) == 0) return std::string(1500, '[') + "1" + std::string(1500, ']');
  std::string text = "\"";
  for (auto pieces = pick(pick(6) == 0 ? 200 : 10); pieces > 0; --pieces) {
    text += oneOf({"words ", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\\n", "\\\"usage",
                   "use", "\\\\", "\\/", "\\u00e4", "\\ud83d\\ude00", "\x7F", "usage\\\""});
  }
  if (pick(60) == 0) text += oneOf({"\\ud800", "\\udc00", "\\ud800\\u0041", "\\q", "\\u12", "\t"});
  return text + "\"";
}

std::string RandomSessionLog::object(std::vector<std::string> members) {
  std::ranges::shuffle(members, random_);
  std::string text = "{";
  for (const auto& member : members) text += (text.size() > 1 ? "," : "") + member;
  return text + "}";
}

std::string RandomSessionLog::key(const std::string& name) {
  auto spelled = name;
  if (pick(25) == 0) {
    const auto at = pick(static_cast<unsigned>(name.size()));
    constexpr char digits[] = "0123456789abcdef";
    const auto letter = static_cast<unsigned char>(name[at]);
    spelled.replace(at, 1, std::string("\\u00") + digits[letter / 16] + digits[letter % 16]);
  }
  return "\"" + spelled + "\"" + oneOf({":", ":", ": ", " :"});
}

const char* RandomSessionLog::oneOf(std::initializer_list<const char*> choices) {
  return choices.begin()[pick(static_cast<unsigned>(choices.size()))];
}

}  // namespace zephyx
