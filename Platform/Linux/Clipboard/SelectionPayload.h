#pragma once

#include <cstddef>
#include <string>
#include <variant>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// What one target of a selection holds: text or other bytes, in the container in which it is going
/// to be handed out, so that large data are never copied on the way.
using SelectionPayload = std::variant<std::string, Bytes>;

inline std::size_t sizeOf(const SelectionPayload& payload) {
  return std::visit([](const auto& container) { return container.size(); }, payload);
}

inline BytesView viewOf(const SelectionPayload& payload) {
  return std::visit(
      [](const auto& container) {
        return BytesView(reinterpret_cast<const std::uint8_t*>(container.data()), container.size());
      },
      payload);
}

inline void append(SelectionPayload& payload, BytesView bytes) {
  if (auto* text = std::get_if<std::string>(&payload)) {
    text->append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  } else if (auto* data = std::get_if<Bytes>(&payload)) {
    data->insert(data->end(), bytes.begin(), bytes.end());
  }
}

inline void reserve(SelectionPayload& payload, std::size_t size) {
  std::visit([size](auto& container) { container.reserve(size); }, payload);
}

inline std::size_t capacityOf(const SelectionPayload& payload) {
  return std::visit([](const auto& container) { return container.capacity(); }, payload);
}

}  // namespace zephyx
