#include "Platform/Linux/Toolkit.h"

#include <fontconfig/fontconfig.h>

#include <QtGui/QAccessible>
#include <QtGui/QClipboard>
#include <QtGui/QPalette>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QApplication>
#include <optional>
#include <thread>

#include "Platform/Linux/SessionBus.h"

namespace zephyx {
namespace {

/// A variable that has another value for a while; programs that the host starts later see the
/// user's own.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const QByteArray& value) : name_(name) {
    if (qEnvironmentVariableIsSet(name)) previous_ = qgetenv(name);
    qputenv(name, value);
  }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;
  ~ScopedVariable() {
    if (previous_) {
      qputenv(name_, *previous_);
    } else {
      qunsetenv(name_);
    }
  }

 private:
  const char* name_;
  std::optional<QByteArray> previous_;
};

QPalette darkPalette() {
  const QColor window(0x24, 0x24, 0x29);
  const QColor base(0x1b, 0x1b, 0x1f);
  const QColor text(0xe8, 0xe8, 0xec);
  const QColor accent(0x4c, 0x8d, 0xff);
  QPalette palette(QColor(0x36, 0x36, 0x3d), window);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, window);
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::ButtonText, text);
  palette.setColor(QPalette::ToolTipBase, window);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::PlaceholderText, QColor(0x8a, 0x8a, 0x93));
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, accent);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor(0x75, 0x75, 0x7d));
  }
  return palette;
}

}  // namespace

Toolkit::Toolkit(int argc, char** argv) : argc_(argc) {
  const ScopedVariable platform("QT_QPA_PLATFORM", "xcb");
  // The plain event loop starts faster and wakes up cheaper than GLib's.
  const ScopedVariable eventLoop("QT_NO_GLIB", "1");
  // A desktop's theme plugin would load its whole toolkit for colours that the host does not use.
  const ScopedVariable desktop("XDG_CURRENT_DESKTOP", "");
  const ScopedVariable session("DESKTOP_SESSION", "");
  const ScopedVariable kdeSession("KDE_FULL_SESSION", "");
  const ScopedVariable gnomeSession("GNOME_DESKTOP_SESSION_ID", "");

  // The tray application is not restored by sessions; connecting to the manager costs time.
  QCoreApplication::setAttribute(Qt::AA_DisableSessionManager);
  QCoreApplication::setApplicationName(QStringLiteral("zephyx"));
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Zephyx"));
  QGuiApplication::setDesktopFileName(QStringLiteral("com.zephyx.app"));
  QApplication::setStyle(QStringLiteral("fusion"));
  QApplication::setPalette(darkPalette());
  // Reading the font configuration takes as long as connecting to the display: they go side by
  // side, but not while the environment changes.
  std::thread fonts([] { FcInit(); });
  application_ = std::make_unique<QApplication>(argc_, argv);
  fonts.join();
  if (!hasSessionBus()) {
    // The toolkit looks for assistive technology on the bus as soon as an item is sized. It asks
    // once, and here it hears that there is none.
    const ScopedVariable bus("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    QAccessible::isActive();
  }
  // Text fields would ask every new owner of the clipboard whether it has text, and wait for it.
  QGuiApplication::clipboard()->blockSignals(true);
  QApplication::setQuitOnLastWindowClosed(false);
  // No GL: a third of the memory, and the first frame in a tenth of the time.
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

Toolkit::~Toolkit() = default;

}  // namespace zephyx
