#include "Tests/Desktop/ZephyxProcess.h"

#include <algorithm>

namespace zephyx {

ZephyxProcess::ZephyxProcess(VirtualDesktop& desktop, const Environment& additions,
                             std::vector<std::string> starter)
    : desktop_(desktop), logFile_(desktop.home() / "zephyx.log"), history_(historyFile()) {
  std::filesystem::remove(logFile_);
  starter.push_back(executable().string());
  process_ = desktop.start(starter, additions, logFile_);
}

ZephyxProcess::~ZephyxProcess() = default;

std::filesystem::path ZephyxProcess::executable() {
  return ZEPHYX_EXECUTABLE;
}

bool ZephyxProcess::waitUntilReady() const {
  constexpr std::uint16_t shiftSuper = 0x41;
  return waitForLog("[Clipboard] initialize() done") &&
         waitFor([&] { return mainWindow() && panel() == std::nullopt; }) &&
         waitFor([&] { return desktop_.windows().isGrabbedByOthers(key::V, shiftSuper); });
}

void ZephyxProcess::useSettings(const VirtualDesktop& desktop,
                                const std::map<std::string, std::string>& settings) {
  std::string json;
  for (const auto& [key, value] : settings)
    json += (json.empty() ? "" : ", ") + ("\"" + key + R"(": {"string": ")" + value + "\"}");
  const auto folder = desktop.configHome() / "com.zephyx.app";
  std::filesystem::create_directories(folder);
  writeFile(folder / "defaults.json", "{" + json + "}");
}

void ZephyxProcess::useChatServer(const VirtualDesktop& desktop, const std::string& address) {
  useSettings(desktop, {{"flutter.ai.serverAddress", address}, {"flutter.ai.serverModel", "any"}});
}

std::size_t ZephyxProcess::logCount(const std::string& text) const {
  const std::string content = log();
  std::size_t count = 0;
  for (auto at = content.find(text); at != std::string::npos; at = content.find(text, at + 1))
    ++count;
  return count;
}

std::string ZephyxProcess::logEnd(std::size_t bytes) const {
  const auto whole = log();
  return whole.substr(whole.size() - std::min(bytes, whole.size()));
}

std::optional<DesktopWindow> ZephyxProcess::mainWindow() const {
  return desktop_.windows().find([&](const DesktopWindow& window) {
    return window.pid == pid() && window.viewable && window.width >= 600;
  });
}

std::optional<DesktopWindow> ZephyxProcess::windowOfSize(int width, int height) const {
  return desktop_.windows().find([&](const DesktopWindow& window) {
    return window.pid == pid() && window.viewable && window.width == width &&
           window.height == height;
  });
}

std::optional<DesktopWindow> ZephyxProcess::trayIcon() const {
  const auto& windows = desktop_.windows();
  for (auto& window : windows.viewable()) {
    if (window.pid != pid() || window.width > 64 || window.height > 64) continue;
    const pid_t host = windows.processOf(windows.parentOf(window.id));
    if (host != pid() && windows.parentOf(window.id) != windows.root()) return window;
  }
  return std::nullopt;
}

std::optional<DesktopWindow> ZephyxProcess::menu() const {
  for (auto& window : desktop_.windows().viewable())
    if (window.pid == pid() && window.overrideRedirect && window.height > 60) return window;
  return std::nullopt;
}

std::optional<DesktopWindow> ZephyxProcess::notice() const {
  for (auto& window : desktop_.windows().viewable())
    if (window.pid == pid() && window.width > 300 && window.height > 30 && window.height < 60)
      return window;
  return std::nullopt;
}

bool ZephyxProcess::hasKeyboard(const std::optional<DesktopWindow>& window) const {
  const auto& windows = desktop_.windows();
  return window && windows.active() == window->id && windows.focused() == window->id;
}

bool ZephyxProcess::openPanel() const {
  desktop_.input().chord({key::Shift, key::Super, key::V});
  return waitFor([&] { return hasKeyboard(panel()); });
}

bool ZephyxProcess::leavePanel() const {
  for (int presses = 0; panel() && presses < 3; ++presses) {
    desktop_.input().tap(key::Escape);
    (void)waitFor([&] { return !panel(); }, std::chrono::milliseconds(400));
  }
  return !panel();
}

bool ZephyxProcess::openTranslation() const {
  desktop_.input().chord({key::Control, key::Alt, key::Super, key::T});
  return waitFor([&] { return hasKeyboard(translatePanel()); });
}

bool ZephyxProcess::openMenu() const {
  return waitFor([&] {
    const auto icon = trayIcon();
    if (!icon) return false;
    desktop_.input().click(icon->centerX(), icon->centerY());
    // It is drawn once it has the keyboard.
    const auto isDrawn = [&] {
      const auto opened = menu();
      return opened && desktop_.windows().distinctColors(*opened) > 8;
    };
    return waitFor(isDrawn, std::chrono::seconds(1));
  });
}

bool ZephyxProcess::leaveMenu() const {
  desktop_.input().tap(key::Escape);
  return waitFor([&] { return !menu(); });
}

bool ZephyxProcess::chooseRow(int fromBottom) const {
  if (!openMenu()) return false;
  for (int row = 0; row < fromBottom; ++row) desktop_.input().tap(key::Up);
  desktop_.input().tap(key::Return);
  return waitFor([&] { return !menu(); });
}

bool ZephyxProcess::waitForEntry(const std::string& text) {
  return waitFor(
      [&] {
        const auto rows = history_.rows();
        return !rows.empty() && rows.back().text == text;
      },
      std::chrono::seconds(10));
}

}  // namespace zephyx
