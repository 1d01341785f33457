#include "Platform/Linux/Input/LinuxEventMonitors.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <utility>

#include "Platform/Linux/Input/ToolkitEventTranslation.h"

namespace zephyx {

Registration LinuxEventMonitors::addLocalMonitor(std::uint64_t mask,
                                                 std::function<bool(const Event&)> handler) {
  // Every event of the program passes an application-wide filter: it is there only when needed.
  if (monitors_->empty()) qGuiApp->installEventFilter(this);
  auto monitor = std::make_shared<Monitor>(Monitor{mask, std::move(handler)});
  monitors_->push_back(monitor);
  return Registration(
      [list = std::weak_ptr<Monitors>(monitors_), weak = std::weak_ptr<Monitor>(monitor)] {
        const auto monitors = list.lock();
        const auto ended = weak.lock();
        if (!monitors || !ended) return;
        ended->isRegistered = false;
        std::erase(*monitors, ended);
      });
}

Registration LinuxEventMonitors::captureKeyboard() {
  if (!keyboard_) keyboard_ = std::make_shared<KeyboardGrab>();
  if (!keyboard_->hold()) return {};
  return Registration([weak = std::weak_ptr(keyboard_)] {
    if (const auto keyboard = weak.lock()) keyboard->letGo();
  });
}

bool LinuxEventMonitors::eventFilter(QObject* watched, QEvent* event) {
  const bool isCaptured = keyboard_ && keyboard_->isHeld();
  if (monitors_->empty() && !isCaptured) {
    qGuiApp->removeEventFilter(this);
    return false;
  }
  // With the keyboard captured no key is a shortcut, neither of a text field nor of a window.
  if (isCaptured && event->type() == QEvent::ShortcutOverride) {
    event->accept();
    return true;
  }
  // Windows see an event first; the items and widgets in them see it again. An open menu keeps its
  // events to itself.
  const auto* window = qobject_cast<QWindow*>(watched);
  if (!window || window->type() == Qt::Popup) return false;
  if (event->type() == QEvent::KeyPress && keyboard_ && keyboard_->isLeaving()) return true;
  const auto translated = hostEvent(*event);
  if (!translated) return false;

  const auto monitors = *monitors_;
  for (const auto& monitor : monitors) {
    if (!monitor->isRegistered || !(monitor->mask & eventMask(translated->type))) continue;
    if (!monitor->handler(*translated)) return true;
  }
  return false;
}

}  // namespace zephyx
