#include "Platform/Linux/Input/LinuxHotKeys.h"

#include <QtCore/QMetaObject>
#include <QtWidgets/QApplication>
#include <algorithm>

#include "Platform/Linux/Input/KeyCodes.h"
#include "Platform/Linux/Input/ModifierMap.h"
#include "Platform/Linux/Input/Xkb.h"
#include "Platform/Linux/X11.h"

namespace zephyx {
namespace {

constexpr std::uint16_t matchedModifiers =
    XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;

std::uint16_t xModifiersFromCarbon(std::uint32_t modifiers) {
  unsigned mask = 0;
  if (modifiers & carbonModifier::shift) mask |= XCB_MOD_MASK_SHIFT;
  if (modifiers & carbonModifier::control) mask |= XCB_MOD_MASK_CONTROL;
  if (modifiers & carbonModifier::option) mask |= XCB_MOD_MASK_1;
  if (modifiers & carbonModifier::command) mask |= XCB_MOD_MASK_4;
  return static_cast<std::uint16_t>(mask);
}

}  // namespace

LinuxHotKeys::LinuxHotKeys()
    : connection_(toolkitConnection()),
      events_([this](const xcb_generic_event_t& event) { return filter(event); }) {
  if (!connection_) return;
  root_ = X11Connection(connection_).root();
  numLockMask_ = ModifierMap::read(connection_).numLockMask();
  const auto* xkb = xcb_get_extension_data(connection_, &xcb_xkb_id);
  if (xkb && xkb->present) xkbFirstEvent_ = xkb->first_event;
}

LinuxHotKeys::~LinuxHotKeys() {
  for (const auto& [combination, count] : grabs_) ungrab(combination);
}

HotKeyRegistration LinuxHotKeys::registerHotKey(std::uint32_t keyCode,
                                                std::uint32_t carbonModifiers,
                                                HotKeyIdentity identity) {
  const auto key = static_cast<std::uint8_t>(xKeycodeFromMac(keyCode));
  if (!connection_ || key == 0) return {hotKeyStatus::invalid, {}};
  const Combination combination{key, xModifiersFromCarbon(carbonModifiers)};
  // The server does not refuse a client's own duplicates, and one release would end both.
  if (!grabs_.contains(combination)) {
    const auto status = grab(combination);
    if (status != hotKeyStatus::noErr) return {status, {}};
  }
  ++grabs_[combination];
  const auto token = nextToken_++;
  entries_.push_back({token, combination, identity});
  auto end = guard_.wrap([this, token] { unregister(token); });
  return {hotKeyStatus::noErr, Registration([end]() mutable { end(); })};
}

void LinuxHotKeys::unregister(std::uint64_t token) {
  const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& e) { return e.token == token; });
  if (entry == entries_.end()) return;
  const auto combination = entry->combination;
  entries_.erase(entry);
  if (--grabs_[combination] > 0) return;
  grabs_.erase(combination);
  ungrab(combination);
}

Registration LinuxHotKeys::setPressedHandler(std::function<void(HotKeyIdentity)> handler) {
  handler_ = std::move(handler);
  const auto token = handlerToken_ = nextToken_++;
  auto end = guard_.wrap([this, token] {
    if (handlerToken_ == token) handler_ = nullptr;
  });
  return Registration([end]() mutable { end(); });
}

void LinuxHotKeys::withoutGrab(std::uint8_t xKeycode, std::uint16_t xModifiers,
                               const std::function<void()>& body) {
  const Combination combination{xKeycode, xModifiers};
  const bool isGrabbed = grabs_.contains(combination);
  if (isGrabbed) ungrab(combination);
  body();
  if (isGrabbed) grab(combination);
}

std::int32_t LinuxHotKeys::grab(Combination combination) {
  std::vector<xcb_void_cookie_t> cookies;
  for (const auto modifiers : lockVariants(combination.second)) {
    cookies.push_back(xcb_grab_key_checked(connection_, 0, root_, modifiers, combination.first,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
  }
  auto status = hotKeyStatus::noErr;
  for (const auto cookie : cookies) {
    const XReply<xcb_generic_error_t> error(xcb_request_check(connection_, cookie));
    if (!error) continue;
    status = error->error_code == XCB_ACCESS ? hotKeyStatus::exists : hotKeyStatus::invalid;
  }
  if (status != hotKeyStatus::noErr) ungrab(combination);
  return status;
}

void LinuxHotKeys::ungrab(Combination combination) {
  for (const auto modifiers : lockVariants(combination.second)) {
    xcb_ungrab_key(connection_, combination.first, root_, modifiers);
  }
  xcb_flush(connection_);
}

std::vector<std::uint16_t> LinuxHotKeys::lockVariants(std::uint16_t modifiers) const {
  const auto capsLock = static_cast<std::uint16_t>(modifiers | XCB_MOD_MASK_LOCK);
  std::vector<std::uint16_t> variants{modifiers, capsLock};
  if (numLockMask_ != 0) {
    variants.push_back(static_cast<std::uint16_t>(modifiers | numLockMask_));
    variants.push_back(static_cast<std::uint16_t>(capsLock | numLockMask_));
  }
  return variants;
}

bool LinuxHotKeys::filter(const xcb_generic_event_t& event) {
  switch (eventTypeOf(event)) {
    case XCB_KEY_PRESS:
      return filterPress(reinterpret_cast<const xcb_key_press_event_t&>(event));
    case XCB_KEY_RELEASE:
      repeat_.released(reinterpret_cast<const xcb_key_release_event_t&>(event));
      return false;
    default:
      break;
  }
  if (isMappingChange(event) && !isMapCheckPending_) {
    // One change of the keyboard comes as a burst of events.
    isMapCheckPending_ = true;
    QMetaObject::invokeMethod(qApp, guard_.wrap([this] { followModifierMap(); }),
                              Qt::QueuedConnection);
  }
  return false;
}

bool LinuxHotKeys::filterPress(const xcb_key_press_event_t& press) {
  // While a menu of ours is open its grab beats the passive ones, and the press comes to it.
  if (press.event != root_ && !QApplication::activePopupWidget()) return false;
  const Combination combination{press.detail,
                                static_cast<std::uint16_t>(press.state & matchedModifiers)};
  const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& e) { return e.combination == combination; });
  if (entry == entries_.end()) return false;
  if (!repeat_.isRepeat(press)) {
    // The handler may open menus and windows, which must not happen inside the toolkit's reading
    // of its events.
    QMetaObject::invokeMethod(qApp, guard_.wrap([this, token = entry->token] { deliver(token); }),
                              Qt::QueuedConnection);
  }
  return true;
}

void LinuxHotKeys::deliver(std::uint64_t token) {
  const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& e) { return e.token == token; });
  if (entry == entries_.end() || !handler_) return;
  // The handler may register, unregister and replace itself.
  const auto handler = handler_;
  handler(entry->identity);
}

bool LinuxHotKeys::isMappingChange(const xcb_generic_event_t& event) const {
  if (eventTypeOf(event) == XCB_MAPPING_NOTIFY) return true;
  // The kind of an XKB event stands in the second byte.
  return xkbFirstEvent_ != 0 && eventTypeOf(event) == xkbFirstEvent_ &&
         (event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event.pad0 == XCB_XKB_MAP_NOTIFY);
}

void LinuxHotKeys::followModifierMap() {
  isMapCheckPending_ = false;
  const auto mask = ModifierMap::read(connection_).numLockMask();
  if (mask == numLockMask_) return;
  for (const auto& [combination, count] : grabs_) ungrab(combination);
  numLockMask_ = mask;
  // A variant that another program holds leaves that hot key silent until the next change.
  for (const auto& [combination, count] : grabs_) grab(combination);
}

}  // namespace zephyx
