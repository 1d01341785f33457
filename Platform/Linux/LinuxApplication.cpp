#include "Platform/Linux/LinuxApplication.h"

#include <unistd.h>

#include <QtCore/QEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <algorithm>
#include <cstdlib>

#include "Platform/Linux/SingleInstance.h"
#include "Platform/Linux/Windows/DesktopWatch.h"
#include "Platform/Linux/Windows/WindowHints.h"

namespace zephyx {
namespace {

bool isInLoop = false;

// The toolkit says so and calls `exit` in the middle of its loop when the X server has gone. Other
// threads still use what the ends of static objects would take from under them.
void leaveAtOnce() {
  if (isInLoop) _exit(EXIT_FAILURE);
}

}  // namespace

/// Keeps file dialogs above the window that they were opened from, whatever becomes of its level.
class LinuxApplication::DialogPlacer final : public QObject {
 public:
  explicit DialogPlacer(LinuxApplication& application) : application_(application) {
    qApp->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Show || !watched->isWidgetType()) return false;
    auto* dialog = qobject_cast<QFileDialog*>(watched);
    auto* window = dialog ? dialog->windowHandle() : nullptr;
    if (!window || window->transientParent()) return false;
    const auto windows = application_.livingWindows();
    const auto owner = std::find_if(windows.begin(), windows.end(),
                                    [](const auto& each) { return each->isVisible(); });
    if (owner != windows.end()) (*owner)->keepAbove(*window);
    return false;
  }

 private:
  LinuxApplication& application_;
};

LinuxApplication::LinuxApplication(DesktopWatch& watch, LocalNotificationCenter& center,
                                   SingleInstance& instance, WindowHints& hints)
    : watch_(watch),
      instance_(instance),
      hints_(hints),
      keyTracker_(watch, center),
      signals_([this] { terminate(); }),
      dialogPlacer_(std::make_unique<DialogPlacer>(*this)) {}

LinuxApplication::~LinuxApplication() = default;

int LinuxApplication::run(ApplicationDelegate& delegate) {
  delegate_ = &delegate;
  QApplication::setQuitOnLastWindowClosed(
      delegate.applicationShouldTerminateAfterLastWindowClosed());
  delegate.loadInterface();
  QMetaObject::invokeMethod(
      dialogPlacer_.get(),
      [this] {
        delegate_->applicationDidFinishLaunching();
        instance_.listen([this] { delegate_->applicationShouldHandleReopen(); });
      },
      Qt::QueuedConnection);
  std::atexit(leaveAtOnce);
  isInLoop = true;
  const int status = QApplication::exec();
  isInLoop = false;
  instance_.stopListening();
  return status;
}

void LinuxApplication::terminate() {
  // Not `quit`, which asks every window first: the host's windows refuse to close.
  QApplication::exit(0);
}

std::string LinuxApplication::bundleIdentifier() const {
  return QGuiApplication::desktopFileName().toStdString();
}

std::shared_ptr<Window> LinuxApplication::makeWindow(const WindowConfiguration& configuration) {
  auto window = std::make_shared<LinuxWindow>(configuration, hints_, keyTracker_, watch_);
  std::erase_if(windows_, [](const auto& each) { return each.expired(); });
  windows_.push_back(window);
  return window;
}

std::vector<std::shared_ptr<LinuxWindow>> LinuxApplication::livingWindows() const {
  std::vector<std::shared_ptr<LinuxWindow>> living;
  for (const auto& each : windows_) {
    if (auto window = each.lock()) living.push_back(std::move(window));
  }
  return living;
}

std::vector<std::shared_ptr<Window>> LinuxApplication::windows() const {
  const auto living = livingWindows();
  return {living.begin(), living.end()};
}

std::shared_ptr<Window> LinuxApplication::keyWindow() const {
  for (auto& window : livingWindows()) {
    if (window->isKeyWindow()) return window;
  }
  return nullptr;
}

bool LinuxApplication::hasVisibleSavePanel() const {
  const auto widgets = QApplication::topLevelWidgets();
  return std::any_of(widgets.begin(), widgets.end(), [](const QWidget* widget) {
    return widget->isVisible() && qobject_cast<const QFileDialog*>(widget);
  });
}

void LinuxApplication::activateIgnoringOtherApps() {
  // Focus belongs to windows here. Which one it is shows once the caller is through: it may be
  // about to bring another window to the front.
  QMetaObject::invokeMethod(
      dialogPlacer_.get(),
      [this] {
        if (keyTracker_.keyWindow() || hints_.hasJustActivated()) return;
        const auto windows = livingWindows();
        const auto shown = std::find_if(windows.rbegin(), windows.rend(),
                                        [](const auto& each) { return each->isVisible(); });
        if (shown != windows.rend()) (*shown)->activate();
      },
      Qt::QueuedConnection);
}

}  // namespace zephyx
