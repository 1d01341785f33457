#include "Platform/Linux/Input/HeldKeys.h"

#include <xcb/xinput.h>

#include <string_view>
#include <vector>

#include "Platform/Linux/X11.h"

namespace zephyx {
namespace {

KeySet keysOf(const std::uint8_t* bits) {
  KeySet keys;
  for (std::size_t key = 0; key < keys.size(); ++key) {
    if (bits[key / 8] & (1u << (key % 8))) keys.set(key);
  }
  return keys;
}

std::vector<std::uint8_t> physicalKeyboards(xcb_connection_t* connection) {
  std::vector<std::uint8_t> keyboards;
  const XReply<xcb_input_list_input_devices_reply_t> devices(xcb_input_list_input_devices_reply(
      connection, xcb_input_list_input_devices(connection), nullptr));
  if (!devices) return keyboards;
  auto device = xcb_input_list_input_devices_devices_iterator(devices.get());
  auto name = xcb_input_list_input_devices_names_iterator(devices.get());
  for (; device.rem && name.rem; xcb_input_device_info_next(&device), xcb_str_next(&name)) {
    const std::string_view text(xcb_str_name(name.data),
                                static_cast<std::size_t>(xcb_str_name_length(name.data)));
    if (device.data->device_use == XCB_INPUT_DEVICE_USE_IS_X_EXTENSION_KEYBOARD &&
        text.find("XTEST") == std::string_view::npos) {
      keyboards.push_back(device.data->device_id);
    }
  }
  return keyboards;
}

KeySet keysOf(const xcb_input_query_device_state_reply_t& state) {
  KeySet keys;
  for (auto input = xcb_input_query_device_state_classes_iterator(&state); input.rem;
       xcb_input_input_state_next(&input)) {
    if (input.data->class_id != XCB_INPUT_INPUT_CLASS_KEY) continue;
    keys |= keysOf(reinterpret_cast<const xcb_input_key_state_t*>(input.data)->keys);
  }
  return keys;
}

}  // namespace

KeySet keysSeenDown(xcb_connection_t* connection) {
  const XReply<xcb_query_keymap_reply_t> reply(
      xcb_query_keymap_reply(connection, xcb_query_keymap(connection), nullptr));
  return reply ? keysOf(reply->keys) : KeySet{};
}

bool hasPressedKeys(xcb_connection_t* connection) {
  const auto map = ModifierMap::read(connection);
  return (keysSeenDown(connection) & ~map.heldModifierKeys() & ~map.lockKeys()).any();
}

KeySet keysPhysicallyDown(xcb_connection_t* connection) {
  KeySet keys;
  const auto keyboards = physicalKeyboards(connection);
  // A device's state can be asked for only while this client has it open. All requests go out
  // before the first answer is awaited: a laptop easily has ten keyboards.
  std::vector<xcb_input_open_device_cookie_t> opened;
  std::vector<xcb_input_query_device_state_cookie_t> asked;
  for (const auto keyboard : keyboards) {
    opened.push_back(xcb_input_open_device(connection, keyboard));
    asked.push_back(xcb_input_query_device_state(connection, keyboard));
  }
  for (const auto& cookie : opened) {
    const XReply<xcb_input_open_device_reply_t> reply(
        xcb_input_open_device_reply(connection, cookie, nullptr));
  }
  for (const auto& cookie : asked) {
    const XReply<xcb_input_query_device_state_reply_t> state(
        xcb_input_query_device_state_reply(connection, cookie, nullptr));
    if (state) keys |= keysOf(*state);
  }
  return keys;
}

}  // namespace zephyx
