#include "Platform/Linux/Engines/LinuxFlutterViewController.h"

#include <QtCore/QLoggingCategory>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <utility>

#include "Platform/Linux/Engines/LinuxFlutterEngine.h"
#include "Platform/Linux/Engines/LinuxVisualEffectView.h"
#include "Platform/Linux/Engines/ScreenProgram.h"

namespace zephyx {

LinuxFlutterViewController::LinuxFlutterViewController(std::shared_ptr<LinuxFlutterEngine> engine,
                                                       QQmlEngine& qml)
    : engine_(std::move(engine)), qml_(qml), view_(std::make_unique<QQuickItem>()) {
  view_->setFlag(QQuickItem::ItemIsFocusScope);
  view_->setFocus(true);
  engine_->setWillShutDown([this] { root_.reset(); });
}

LinuxFlutterViewController::~LinuxFlutterViewController() {
  engine_->setWillShutDown(nullptr);
}

std::shared_ptr<FlutterEngine> LinuxFlutterViewController::engine() const {
  return engine_;
}

Rect LinuxFlutterViewController::viewBounds() const {
  return {{0, 0}, {view_->width(), view_->height()}};
}

void LinuxFlutterViewController::setViewAlpha(double alpha) {
  view_->setOpacity(alpha);
}

std::shared_ptr<VisualEffectView> LinuxFlutterViewController::addVisualEffectView() {
  return std::make_shared<LinuxVisualEffectView>(qml_, *view_);
}

void LinuxFlutterViewController::prepareView() {
  const auto* program = engine_->program();
  if (!program) return;
  preparation_ =
      std::make_unique<QQmlComponent>(&qml_, program->viewSource(), QQmlComponent::Asynchronous);
}

void LinuxFlutterViewController::loadView() {
  auto* program = engine_->program();
  if (root_ || !program) return;
  auto* controller = program->controller();
  QQmlEngine::setObjectOwnership(controller, QQmlEngine::CppOwnership);

  // Waits for a preparation that is not yet complete.
  QQmlComponent component(&qml_, program->viewSource());
  preparation_.reset();
  std::unique_ptr<QObject> made(component.createWithInitialProperties(
      {{QStringLiteral("screen"), QVariant::fromValue(controller)}}));
  root_.reset(qobject_cast<QQuickItem*>(made.get()));
  if (!root_) {
    qCritical("%s", qPrintable(component.errorString()));
    return;
  }
  [[maybe_unused]] auto* owned = made.release();
  root_->setSize(view_->size());
  root_->setParentItem(view_.get());
  root_->setFocus(true);
}

void LinuxFlutterViewController::setViewSize(QSize size) {
  view_->setSize(size);
  if (root_) root_->setSize(size);
}

void LinuxFlutterViewController::takeFocus() {
  if (root_) root_->forceActiveFocus(Qt::ActiveWindowFocusReason);
}

}  // namespace zephyx
