#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "Tests/Desktop/HistoryFile.h"
#include "Tests/Desktop/VirtualDesktop.h"

namespace zephyx {

/// The program under test, running on a virtual desktop, seen from outside: its log, its windows,
/// its history file.
class ZephyxProcess {
 public:
  /// Starts the program; returns at once.
  explicit ZephyxProcess(VirtualDesktop& desktop, const Environment& additions = {});
  ~ZephyxProcess();

  pid_t pid() const { return process_.pid(); }
  ChildProcess& process() { return process_; }
  /// True when the main window is on the screen, the hot keys are taken and copies are recorded.
  [[nodiscard]] bool waitUntilReady() const;

  std::string log() const;
  [[nodiscard]] bool waitForLog(const std::string& text, std::size_t times = 1) const;
  std::size_t logCount(const std::string& text) const;

  std::optional<DesktopWindow> mainWindow() const;
  /// The clipboard's.
  std::optional<DesktopWindow> panel() const;
  /// Of the compact size.
  std::optional<DesktopWindow> translatePanel() const;
  /// The icon, once a tray has taken it in.
  std::optional<DesktopWindow> trayIcon() const;
  /// The open menu.
  std::optional<DesktopWindow> menu() const;

  HistoryFile& history() { return history_; }
  /// Waits until the history's newest entry has this text.
  [[nodiscard]] bool waitForEntry(const std::string& text);
  std::filesystem::path dataFolder() const;
  std::filesystem::path historyFile() const;

  static std::filesystem::path executable();
  static constexpr int panelWidth = 560;
  static constexpr int panelHeight = 720;
  /// Inside the first entry of the list, from the panel's top.
  static constexpr int firstEntryY = 186;

 private:
  std::optional<DesktopWindow> windowOfSize(int width, int height) const;

  VirtualDesktop& desktop_;
  std::filesystem::path logFile_;
  HistoryFile history_;
  ChildProcess process_;
};

}  // namespace zephyx
