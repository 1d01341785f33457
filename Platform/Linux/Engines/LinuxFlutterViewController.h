#pragma once

#include <QtCore/QSize>
#include <memory>

#include "Platform/FlutterEngine.h"

class QQmlComponent;
class QQmlEngine;
class QQuickItem;

namespace zephyx {

class LinuxFlutterEngine;

/// The picture of a screen program: an item that holds the program's root item and, beneath it, the
/// frosted backgrounds.
class LinuxFlutterViewController final : public FlutterViewController {
 public:
  LinuxFlutterViewController(std::shared_ptr<LinuxFlutterEngine> engine, QQmlEngine& qml);
  ~LinuxFlutterViewController() override;

  std::shared_ptr<FlutterEngine> engine() const override;
  void makeBackgroundTransparent() override { isTransparent_ = true; }
  Rect viewBounds() const override;
  void setViewAlpha(double alpha) override;
  std::shared_ptr<VisualEffectView> addVisualEffectView() override;

  bool hasTransparentBackground() const { return isTransparent_; }
  QQuickItem& view() { return *view_; }
  /// Starts reading what the program's root item is made of, on the side.
  void prepareView();
  /// Makes the program's root item unless it is there.
  void loadView();
  void setViewSize(QSize size);
  /// Gives the root item the keyboard within its window.
  void takeFocus();

 private:
  const std::shared_ptr<LinuxFlutterEngine> engine_;
  QQmlEngine& qml_;
  bool isTransparent_ = false;
  std::unique_ptr<QQmlComponent> preparation_;
  std::unique_ptr<QQuickItem> view_;
  std::unique_ptr<QQuickItem> root_;
};

}  // namespace zephyx
