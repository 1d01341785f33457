#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Tests/Desktop/ChildProcess.h"
#include "Tests/Desktop/DesktopInput.h"
#include "Tests/Desktop/DesktopWindows.h"
#include "Tests/Desktop/TemporaryDirectory.h"
#include "Tests/Desktop/WaitFor.h"

namespace zephyx {

struct VirtualDesktopOptions {
  int width = 1280;
  int height = 800;
  bool windowManager = true;  ///< openbox
  bool compositor = false;    ///< picom: translucent windows
  bool tray = false;          ///< trayer: an XEmbed tray at the top right
  bool sessionBus = false;    ///< a D-Bus of its own; without it programs find none
  bool outputs = false;       ///< Xorg on a card with many outputs, not Xvfb; the first is in use
  std::vector<std::string> serverArguments;
};

/// A whole X desktop that only this process knows: server, window manager, home directory. Several
/// may stand side by side. The constructor returns when everything answers and throws
/// std::runtime_error when something does not.
class VirtualDesktop {
 public:
  explicit VirtualDesktop(const VirtualDesktopOptions& options = {});
  VirtualDesktop(const VirtualDesktop&) = delete;
  VirtualDesktop& operator=(const VirtualDesktop&) = delete;

  /// The display's name, ":7".
  const std::string& display() const { return display_; }
  const std::filesystem::path& home() const { return home_; }
  std::filesystem::path dataHome() const { return home_ / ".local/share"; }
  std::filesystem::path configHome() const { return home_ / ".config"; }
  /// What a program needs to live on this desktop.
  const Environment& environment() const { return environment_; }
  /// Moves this process onto the desktop. Before it opens a connection or starts a thread.
  void enter() const;

  DesktopInput& input() { return *input_; }
  DesktopWindows& windows() { return *windows_; }

  /// Starts a program on the desktop. Its output is thrown away, or goes to `output`.
  ChildProcess start(const std::vector<std::string>& arguments, const Environment& additions = {},
                     const std::filesystem::path& output = {}) const;
  /// Runs a program on the desktop to its end.
  CommandResult run(const std::vector<std::string>& arguments, const std::string& input = {}) const;

  /// Puts bytes on the clipboard as `target`, by a program of somebody else (xclip).
  void copy(const std::string& bytes, const std::string& target = "UTF8_STRING") const;
  /// Reads a selection by a program of somebody else.
  std::string pasted(const std::string& target = "UTF8_STRING",
                     const std::string& selection = "clipboard") const;

  /// Cuts the screen into two monitors, LEFT and RIGHT, of half its width each.
  void splitIntoTwoMonitors() const;
  /// Saves what the screen, or a part of it ("560x720+360+40"), shows as a PNG file.
  void screenshot(const std::filesystem::path& path, const std::string& part = {}) const;

  /// Each returns when it answers, or is gone.
  void startTray();
  void stopTray() { tray_.terminate(); }
  void startWindowManager();
  /// As if it had crashed.
  void stopWindowManager() { windowManager_.kill(); }
  void startCompositor();
  void stopCompositor() { compositor_.terminate(); }
  void startSessionBus();  ///< under the address of the one before
  void stopSessionBus();
  void startKeyring();  ///< a keeper of secrets on the desktop's own bus
  void stopKeyring() { keyring_.kill(); }
  /// What is left of this object then is its folders.
  void killServer() { server_.kill(); }

 private:
  /// Starts a server program and waits for the line in which it says where it can be reached.
  std::string firstLine(const std::vector<std::string>& arguments, ChildProcess& program) const;
  void startServer(const VirtualDesktopOptions& options);
  void startServerWithOutputs();

  TemporaryDirectory directory_;
  std::filesystem::path home_;
  std::string display_;
  int width_;
  int height_;
  Environment environment_;
  // Destroyed in reverse order: the server last.
  ChildProcess server_;
  ChildProcess sessionBus_;
  ChildProcess keyring_;
  ChildProcess windowManager_;
  ChildProcess compositor_;
  ChildProcess tray_;
  std::unique_ptr<DesktopInput> input_;
  std::unique_ptr<DesktopWindows> windows_;
};

}  // namespace zephyx
