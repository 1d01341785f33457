#include "Tests/Screens/TestWorld.h"

#include <gtest/gtest.h>

#include <QtCore/QDateTime>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtQml/QQmlComponent>
#include <QtWidgets/QApplication>

#include "Channel/StandardMethodCodec.h"

namespace zephyx {
bool waitFor(const std::function<bool()>& condition) {
  const QDeadlineTimer deadline(5000);
  while (!condition()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  }
  return true;
}

TestWorld::TestWorld(std::string entryPoint) : entryPoint_(std::move(entryPoint)) {
  TestMessenger::join(host_, screen_);
  handler_ =
      host_->setMessageHandler(screenChannelName, [this](BytesView bytes, BinaryReply reply) {
        const auto call = StandardMethodCodec::decodeCall(bytes);
        ASSERT_TRUE(call);
        calls.push_back(*call);
        if (const auto open = unanswered.find(std::string(call->method)); open != unanswered.end())
          return open->second.push_back(std::move(reply));
        const auto answer = replies.find(std::string(call->method));
        reply(StandardMethodCodec::encodeReply(answer == replies.end() ? Value() : answer->second));
      });
  startProgram();
}

TestWorld::~TestWorld() {
  stopProgram();
}

void TestWorld::startProgram() {
  const auto readClipboardText = [this](std::function<void(std::optional<std::string>)> answer) {
    QMetaObject::invokeMethod(
        qApp, [text = clipboardText, answer = std::move(answer)] { answer(text); },
        Qt::QueuedConnection);
  };
  program_ = makeScreenProgram(
      entryPoint_,
      {screen_, defaults, directories_, readClipboardText,
       [this](std::string text) { writtenTexts.push_back(std::move(text)); }, keychain});
}

void TestWorld::stopProgram() {
  picture_.reset();
  // One more frame: a window that ends with removed items keeps what they were drawn with.
  if (window_) window_->grabWindow();
  window_.reset();
  engine_.reset();
  program_.reset();
}

MethodReply TestWorld::call(std::string_view method, const Value& arguments) {
  std::optional<MethodReply> end;
  host_->send(screenChannelName, StandardMethodCodec::encodeCall(method, arguments),
              [&](BytesView bytes) { end = StandardMethodCodec::decodeReply(bytes); });
  EXPECT_TRUE(waitFor([&] { return end.has_value(); })) << method;
  return end.value_or(NotImplemented{});
}

std::vector<MethodCall> TestWorld::callsOf(const std::string& method) const {
  std::vector<MethodCall> found;
  for (const auto& call : calls)
    if (call.method == method) found.push_back(call);
  return found;
}

bool TestWorld::waitForCall(const std::string& method, std::size_t count) {
  return waitFor([&] { return callsOf(method).size() >= count; });
}

QQuickItem* TestWorld::showPicture(int width, int height) {
  engine_ = std::make_unique<QQmlEngine>();
  if (!desktop.isEmpty()) engine_->rootContext()->setContextProperty("desktop", &desktop);
  QQmlComponent component(engine_.get(), program_->viewSource());
  EXPECT_TRUE(component.isReady()) << component.errorString().toStdString();
  if (!component.isReady()) return nullptr;
  picture_.reset(qobject_cast<QQuickItem*>(component.createWithInitialProperties(
      {{"screen", QVariant::fromValue(program_->controller())}})));
  window_ = std::make_unique<QQuickWindow>();
  window_->setColor(Qt::transparent);
  window_->resize(width, height);
  picture_->setParentItem(window_->contentItem());
  picture_->setSize(QSizeF(width, height));
  picture_->forceActiveFocus();
  window_->show();
  window_->requestActivate();
  EXPECT_TRUE(waitFor([&] { return window_->isExposed(); }));
  return picture_.get();
}

QObject* TestWorld::child(const char* name) {
  return picture_->findChild<QObject*>(QLatin1String(name));
}

void TestWorld::press(Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text) {
  QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
  QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
  QCoreApplication::sendEvent(window_.get(), &press);
  QCoreApplication::sendEvent(window_.get(), &release);
}

void TestWorld::type(const QString& text) {
  for (const QChar letter : text)
    press(static_cast<Qt::Key>(letter.toUpper().unicode()), {}, QString(letter));
}

void TestWorld::click(QPointF position) {
  for (const auto kind : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    const bool down = kind == QEvent::MouseButtonPress;
    QMouseEvent event(kind, position, position, Qt::LeftButton,
                      down ? Qt::LeftButton : Qt::NoButton, {});
    QCoreApplication::sendEvent(window_.get(), &event);
  }
}

void TestWorld::settlePicture() {
  waitFor([&, frame = 0]() mutable {
    window_->update();
    return ++frame > 15;
  });
}

Map capturedText(const std::string& text) {
  return {{"type", "text"},
          {"text", text},
          {"copiedAtEpochMs", std::int64_t{QDateTime::currentMSecsSinceEpoch()}}};
}

}  // namespace zephyx
