#include "Platform/UrlSession.h"

#include <algorithm>
#include <string_view>

namespace zephyx {
namespace {

bool hasControl(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7f;
  });
}

}  // namespace

bool UrlRequest::isWellFormed() const {
  if (!url.starts_with("https://") && !url.starts_with("http://")) return false;
  return !hasControl(url) && !hasControl(method) &&
         std::none_of(headers.begin(), headers.end(), [](const auto& header) {
           return header.first.empty() || hasControl(header.first) || hasControl(header.second);
         });
}

}  // namespace zephyx
