#pragma once

#include <QtCore/QTimer>
#include <cstdint>
#include <memory>
#include <string>

#include "Platform/LifetimeGuard.h"
#include "Platform/QuickLook.h"

class QKeyEvent;

namespace zephyx {

struct PreviewContent;
class DesktopWatch;
class Dispatch;
class LocalNotificationCenter;
class PreviewWindow;
class WindowHints;

/// The preview in a window of its own, made when it is first shown.
class LinuxPreviewPanel final : public PreviewPanel {
 public:
  LinuxPreviewPanel(Dispatch& dispatch, LocalNotificationCenter& center, WindowHints& hints,
                    DesktopWatch& watch);
  ~LinuxPreviewPanel() override;

  void setController(PreviewPanelController* controller) override { controller_ = controller; }
  void setLevel(int level) override;
  bool isVisible() const override;
  void reloadData() override;
  void makeKeyAndOrderFront() override;
  void orderOut() override;

 private:
  void ensureWindow();
  void show(const PreviewContent& content);
  bool keyPressed(const QKeyEvent& press);
  void closedByUser();
  void hide();

  Dispatch& dispatch_;
  LocalNotificationCenter& center_;
  WindowHints& hints_;
  DesktopWatch& watch_;
  PreviewPanelController* controller_ = nullptr;
  int level_ = 0;
  std::uint64_t load_ = 0;  ///< number of the newest one: a slower older one must not replace it
  std::unique_ptr<PreviewWindow> window_;
  QTimer leaving_;  ///< runs while the window only waits for the keyboard to go elsewhere
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
