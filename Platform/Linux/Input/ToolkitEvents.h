#pragma once

#include <xcb/xcb.h>

#include <QtCore/QAbstractNativeEventFilter>
#include <functional>

namespace zephyx {

/// The connection that the toolkit reads its events from; null when there is no application object
/// or it does not run on X11. Main thread.
xcb_connection_t* toolkitConnection();

/// Sees every X event of the toolkit's connection before the toolkit does, as long as this object
/// lives. Main thread.
class ToolkitEvents : private QAbstractNativeEventFilter {
 public:
  /// The handler returns true to keep an event from the toolkit. It must not delete this object.
  explicit ToolkitEvents(std::function<bool(const xcb_generic_event_t&)> handler);
  ToolkitEvents(const ToolkitEvents&) = delete;
  ToolkitEvents& operator=(const ToolkitEvents&) = delete;
  ~ToolkitEvents() override;

 private:
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  std::function<bool(const xcb_generic_event_t&)> handler_;
};

/// The type of an event, whether the server sent it or another program did.
inline int eventTypeOf(const xcb_generic_event_t& event) {
  return event.response_type & 0x7f;
}

}  // namespace zephyx
