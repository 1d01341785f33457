#include "Platform/Linux/Input/ToolkitEvents.h"

#include <QtGui/qguiapplication_platform.h>
#include <QtCore/QByteArray>
#include <QtGui/QGuiApplication>

namespace zephyx {

xcb_connection_t* toolkitConnection() {
  if (!qGuiApp) return nullptr;
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 ? x11->connection() : nullptr;
}

ToolkitEvents::ToolkitEvents(std::function<bool(const xcb_generic_event_t&)> handler)
    : handler_(std::move(handler)) {
  if (qGuiApp) qGuiApp->installNativeEventFilter(this);
}

ToolkitEvents::~ToolkitEvents() {
  if (qGuiApp) qGuiApp->removeNativeEventFilter(this);
}

bool ToolkitEvents::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
  if (eventType != "xcb_generic_event_t") return false;
  return handler_(*static_cast<const xcb_generic_event_t*>(message));
}

}  // namespace zephyx
