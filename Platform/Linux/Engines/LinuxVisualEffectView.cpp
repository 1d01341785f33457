#include "Platform/Linux/Engines/LinuxVisualEffectView.h"

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

namespace zephyx {
namespace {

/// The tint of the material and the black over it, mixed.
constexpr const char* cardSource = R"(import QtQuick
Rectangle {
  z: -1
  color: desktop.composited ? "#dc15161a" : "#1d1d22"
  border { width: 1; color: "#26ffffff" }
  antialiasing: true
})";

}  // namespace

LinuxVisualEffectView::LinuxVisualEffectView(QQmlEngine& qml, QQuickItem& host) {
  QQmlComponent component(&qml);
  component.setData(cardSource, QUrl());
  card_.reset(qobject_cast<QQuickItem*>(component.create()));
  if (!card_) card_ = std::make_unique<QQuickItem>();
  card_->setVisible(false);
  card_->setParentItem(&host);
  QObject::connect(&host, &QQuickItem::heightChanged, card_.get(), [this] { place(); });
}

void LinuxVisualEffectView::setFrame(Rect frame) {
  frame_ = frame;
  place();
}

void LinuxVisualEffectView::place() {
  const auto* host = card_->parentItem();
  if (!host) return;
  card_->setPosition({frame_.origin.x, host->height() - frame_.origin.y - frame_.size.height});
  card_->setSize({frame_.size.width, frame_.size.height});
}

void LinuxVisualEffectView::setCornerRadius(double radius) {
  card_->setProperty("radius", radius);
}

void LinuxVisualEffectView::setHidden(bool hidden) {
  card_->setVisible(!hidden);
}

}  // namespace zephyx
