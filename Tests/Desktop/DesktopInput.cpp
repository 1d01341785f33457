#include "Tests/Desktop/DesktopInput.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "Platform/Linux/Input/Xkb.h"
#include "Tests/Desktop/XcbReply.h"

namespace zephyx {
namespace {

std::uint8_t keyCodeOf(char character) {
  static constexpr std::string_view rows[] = {"1234567890-=", "qwertyuiop[]", "asdfghjkl;'",
                                              "zxcvbnm,./"};
  static constexpr std::uint8_t firsts[] = {10, 24, 38, 52};
  if (character == ' ') return key::Space;
  if (character == '\n') return key::Return;
  for (std::size_t row = 0; row < std::size(rows); ++row) {
    const auto column = rows[row].find(character);
    if (column != std::string_view::npos) return static_cast<std::uint8_t>(firsts[row] + column);
  }
  throw std::runtime_error(std::string("no key for the character ") + character);
}

}  // namespace

DesktopInput::DesktopInput(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr)) {
  if (xcb_connection_has_error(connection_)) throw std::runtime_error("no X server " + display);
  root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  const auto* extension = xcb_get_extension_data(connection_, &xcb_input_id);
  owned(
      xcb_xkb_use_extension_reply(connection_, xcb_xkb_use_extension(connection_, 1, 0), nullptr));
  deviceKeyPress_ = static_cast<std::uint8_t>(extension->first_event + XCB_INPUT_DEVICE_KEY_PRESS);
}

DesktopInput::~DesktopInput() {
  while (!held_.empty()) {
    keyboard_ = held_.back().first;
    releaseKey(held_.back().second);
  }
  xcb_disconnect(connection_);
}

std::uint8_t DesktopInput::physicalKeyboard() const {
  const auto reply = owned(xcb_input_xi_query_device_reply(
      connection_, xcb_input_xi_query_device(connection_, XCB_INPUT_DEVICE_ALL), nullptr));
  if (!reply) throw std::runtime_error("the X server has no input extension");
  for (auto device = xcb_input_xi_query_device_infos_iterator(reply.get()); device.rem;
       xcb_input_xi_device_info_next(&device)) {
    const std::string_view name(xcb_input_xi_device_info_name(device.data), device.data->name_len);
    if (device.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD &&
        name.find("XTEST") == std::string_view::npos)
      return static_cast<std::uint8_t>(device.data->deviceid);
  }
  throw std::runtime_error("the X server has no keyboard of its own");
}

void DesktopInput::fake(std::uint8_t type, std::uint8_t detail, int x, int y, std::uint8_t device) {
  const auto cookie = xcb_test_fake_input_checked(connection_, type, detail, XCB_CURRENT_TIME,
                                                  root_, static_cast<std::int16_t>(x),
                                                  static_cast<std::int16_t>(y), device);
  if (owned(xcb_request_check(connection_, cookie)))
    throw std::runtime_error("the X server refused a synthetic event");
}

void DesktopInput::send(bool press, std::uint8_t keyCode) {
  if (keyboard_ == Keyboard::Synthetic) {
    fake(press ? XCB_KEY_PRESS : XCB_KEY_RELEASE, keyCode, 0, 0, 0);
  } else {
    if (!physicalDevice_) physicalDevice_ = physicalKeyboard();
    // A release follows its press in the numbering of the extension's events.
    fake(static_cast<std::uint8_t>(deviceKeyPress_ + (press ? 0 : 1)), keyCode, 0, 0,
         physicalDevice_);
  }
}

void DesktopInput::pressKey(std::uint8_t keyCode) {
  send(true, keyCode);
  held_.emplace_back(keyboard_, keyCode);
}

void DesktopInput::releaseKey(std::uint8_t keyCode) {
  held_.erase(std::remove(held_.begin(), held_.end(), std::pair(keyboard_, keyCode)), held_.end());
  send(false, keyCode);
}

void DesktopInput::chord(std::initializer_list<std::uint8_t> keyCodes) {
  for (auto code = keyCodes.begin(); code != keyCodes.end(); ++code) pressKey(*code);
  for (auto code = std::rbegin(keyCodes); code != std::rend(keyCodes); ++code) releaseKey(*code);
}

void DesktopInput::type(const std::string& text) {
  for (const char character : text) tap(keyCodeOf(character));
}

void DesktopInput::lockLayout(unsigned number) {
  xcb_xkb_latch_lock_state(connection_, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1,
                           static_cast<std::uint8_t>(number), 0, 0, 0);
  (void)lockedLayout();
}

unsigned DesktopInput::lockedLayout() const {
  const auto state = owned(xcb_xkb_get_state_reply(
      connection_, xcb_xkb_get_state(connection_, XCB_XKB_ID_USE_CORE_KBD), nullptr));
  if (!state) throw std::runtime_error("the X server has no keyboard extension");
  return state->lockedGroup;
}

std::vector<std::uint8_t> DesktopInput::pressedKeys() const {
  std::vector<std::uint8_t> result;
  const auto reply =
      owned(xcb_query_keymap_reply(connection_, xcb_query_keymap(connection_), nullptr));
  if (!reply) return result;
  for (unsigned code = 8; code < 256; ++code)
    if (reply->keys[code / 8] & (1u << (code % 8)))
      result.push_back(static_cast<std::uint8_t>(code));
  return result;
}

void DesktopInput::movePointer(int x, int y) {
  fake(XCB_MOTION_NOTIFY, 0, x, y, 0);
}

void DesktopInput::pressButton(int button) {
  fake(XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button), 0, 0, 0);
}

void DesktopInput::releaseButton(int button) {
  fake(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button), 0, 0, 0);
}

void DesktopInput::click(int x, int y, int button) {
  movePointer(x, y);
  pressButton(button);
  releaseButton(button);
}

}  // namespace zephyx
