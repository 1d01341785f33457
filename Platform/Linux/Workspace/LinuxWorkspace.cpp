#include "Platform/Linux/Workspace/LinuxWorkspace.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QThread>
#include <chrono>
#include <thread>

#include "Platform/Linux/Workspace/ExternalPrograms.h"
#include "Platform/Linux/Workspace/LinuxRunningApplication.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;

constexpr auto longestGap = 100ms;  // between two active windows
constexpr auto gapPoll = 5ms;
constexpr const char* ownIdentifier = "com.zephyx.app";
constexpr const char* ownName = "Zephyx";

/// The name of a process's executable; empty when the process has ended.
QString programOf(int process) {
  const auto directory = QStringLiteral("/proc/%1/").arg(process);
  const auto target = QFileInfo(directory + QStringLiteral("exe")).symLinkTarget();
  if (!target.isEmpty()) return QFileInfo(target).fileName().remove(QStringLiteral(" (deleted)"));
  // Programs that run with another group's rights, like xterm, hide their executable.
  QFile name(directory + QStringLiteral("comm"));
  return name.open(QIODevice::ReadOnly) ? QString::fromUtf8(name.readAll().trimmed()) : QString();
}

}  // namespace

LinuxWorkspace::LinuxWorkspace()
    : activeWindowAtom_(windows_->atom("_NET_ACTIVE_WINDOW")),
      lastActiveWindow_(windows_->activeWindow()),
      events_([this](const xcb_generic_event_t& event) { return noticeActiveWindow(event); }) {}

bool LinuxWorkspace::noticeActiveWindow(const xcb_generic_event_t& event) {
  if (eventTypeOf(event) != XCB_PROPERTY_NOTIFY) return false;
  const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
  // The toolkit selects the root window's property changes for itself.
  if (change.atom == activeWindowAtom_ && change.window == windows_->root())
    activeWindowOnMainThread();
  return false;
}

xcb_window_t LinuxWorkspace::activeWindowOnMainThread() const {
  const auto window = windows_->activeWindow();
  if (window != XCB_NONE) {
    sinceNoneActive_.invalidate();
    return lastActiveWindow_ = window;
  }
  if (!sinceNoneActive_.isValid()) sinceNoneActive_.start();
  if (sinceNoneActive_.hasExpired(longestGap.count())) lastActiveWindow_ = XCB_NONE;
  return lastActiveWindow_;
}

xcb_window_t LinuxWorkspace::activeWindowWithPatience() const {
  auto window = windows_->activeWindow();
  const auto deadline = std::chrono::steady_clock::now() + longestGap;
  while (window == XCB_NONE && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(gapPoll);
    window = windows_->activeWindow();
  }
  return window;
}

std::shared_ptr<RunningApplication> LinuxWorkspace::frontmostApplication() const {
  const bool isMainThread = QThread::currentThread() == qApp->thread();
  const auto window = isMainThread ? activeWindowOnMainThread() : activeWindowWithPatience();
  if (window == XCB_NONE) return nullptr;
  const auto process = windows_->processOf(window);
  if (!process) return nullptr;
  return describe({window, *process}, window);
}

std::shared_ptr<RunningApplication> LinuxWorkspace::applicationForProcess(int process) const {
  if (process <= 0 || programOf(process).isEmpty()) return nullptr;
  return describe({XCB_NONE, process}, windows_->topWindowOf(process));
}

std::shared_ptr<RunningApplication> LinuxWorkspace::describe(WindowServer::WindowOfProcess target,
                                                             xcb_window_t window) const {
  LinuxRunningApplication::Description result;
  result.target = target;
  result.iconWindow = window;
  if (target.process == QCoreApplication::applicationPid()) {
    result.bundleIdentifier = ownIdentifier;
    result.localizedName = ownName;
    return std::make_shared<LinuxRunningApplication>(windows_, std::move(result));
  }
  const auto windowClass = windows_->classOf(window);
  const auto program = target.process > 0 ? programOf(target.process) : QString();
  const auto& className = windowClass.className;
  auto entry = entries_.forWindow(windowClass);
  if (!entry && className.isEmpty()) entry = entries_.forProgram(program);
  const auto identifier = entry ? entry->id : className.isEmpty() ? program : className.toLower();
  const auto name = entry && !entry->name.isEmpty() ? entry->name
                    : className.isEmpty()           ? program
                                                    : className;
  result.bundleIdentifier = identifier.toStdString();
  result.localizedName = name.toStdString();
  if (entry) result.themeIcon = entry->icon;
  return std::make_shared<LinuxRunningApplication>(windows_, std::move(result));
}

void LinuxWorkspace::openUrl(const std::string& url) {
  openWithDesktop(QString::fromStdString(url));
}

void LinuxWorkspace::activateFileViewerSelecting(const std::string& path) {
  showInFileManager(QString::fromStdString(path));
}

}  // namespace zephyx
