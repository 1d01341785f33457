#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "Tests/Desktop/VirtualDesktop.h"

namespace zephyx {

/// A program that somebody else wrote, with one place for text: a GTK editor, a Qt line or a
/// terminal. What it holds is read from a file that the program itself writes.
class TargetProgram {
 public:
  enum class Kind { Gtk, Qt, Terminal };

  /// Starts it; returns when its window is active and takes keys.
  TargetProgram(VirtualDesktop& desktop, Kind kind, const std::string& text = {});
  /// A Qt program that copies so much later than it is told to; never with a negative time.
  TargetProgram(VirtualDesktop& desktop, const std::string& text,
                std::chrono::milliseconds copyDelay);

  const DesktopWindow& window() const { return window_; }
  ChildProcess& process() { return process_; }
  bool activate() const { return desktop_.windows().activate(window_.id); }
  bool isActive() const { return desktop_.windows().active() == window_.id; }
  std::string text() const;
  /// True when its text is not the one it started with. Presses no key, unlike `text`.
  bool hasChanged() const;
  [[nodiscard]] bool waitForText(const std::string& text) const;
  /// Select all, copy: with the keys that a user would press. Not in the terminal.
  void copyAll() const;

  static std::string name(Kind kind);

 private:
  TargetProgram(VirtualDesktop& desktop, Kind kind, const std::string& text,
                const std::vector<std::string>& moreArguments);
  bool isUnsaved() const;

  VirtualDesktop& desktop_;
  Kind kind_;
  std::string initialText_;
  std::filesystem::path file_;
  ChildProcess process_;
  DesktopWindow window_;
};

}  // namespace zephyx
