#pragma once

#include <QtQuick/QQuickItem>
#include <memory>

#include "Platform/FlutterEngine.h"

class QQmlEngine;

namespace zephyx {

/// A dark card beneath the picture. X11 has no blur that every compositor offers, so what shows
/// through is dimmed, not frosted; without a compositor the card is opaque.
class LinuxVisualEffectView final : public VisualEffectView {
 public:
  LinuxVisualEffectView(QQmlEngine& qml, QQuickItem& host);

  void setFrame(Rect frame) override;
  void setCornerRadius(double radius) override;
  void setHidden(bool hidden) override;

 private:
  void place();

  Rect frame_;
  std::unique_ptr<QQuickItem> card_;
};

}  // namespace zephyx
