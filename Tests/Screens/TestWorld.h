#pragma once

#include <QtCore/QDeadlineTimer>
#include <QtCore/QEventLoop>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlPropertyMap>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include "Channel/MethodCall.h"
#include "Channel/MethodResult.h"
#include "Platform/Linux/Engines/ScreenProgram.h"
#include "Screens/ScreenFolder.h"
#include "Tests/Screens/TestKeychain.h"
#include "Tests/Screens/TestMessenger.h"
#include "Tests/Simulated/SimulatedDirectories.h"
#include "Tests/Simulated/SimulatedUserDefaults.h"

namespace zephyx {

/// Runs the event loop until the condition holds; false when it does not within five seconds.
bool waitFor(const std::function<bool()>& condition);

/// A screen program with a host at the other end of its channel, and a picture when asked for.
class TestWorld {
 public:
  explicit TestWorld(std::string entryPoint);
  ~TestWorld();

  /// The program's own folder.
  std::string folder() const { return screenFolder(directories_); }
  void startProgram();
  void stopProgram();
  ScreenProgram* program() { return program_.get(); }
  template <typename Controller>
  Controller* controller() {
    return qobject_cast<Controller*>(program_->controller());
  }

  /// Sends to the program, as bytes; the end of the call.
  MethodReply call(std::string_view method, const Value& arguments = {});
  /// The calls that the program made, in order.
  std::vector<MethodCall> calls;
  std::vector<MethodCall> callsOf(const std::string& method) const;
  /// Of the method's last call; null when there was none.
  Value argument(const char* method, const char* key) const {
    const auto found = callsOf(method);
    const Value* value = found.empty() ? nullptr : found.back().arguments.asMap()->find(key);
    return value ? *value : Value();
  }
  /// Waits for the `count`th call of a method.
  bool waitForCall(const std::string& method, std::size_t count = 1);
  /// What the host answers; null to what is not here.
  std::map<std::string, MethodReply> replies;
  /// Calls of these are kept unanswered.
  std::map<std::string, std::vector<BinaryReply>> unanswered;

  QQuickItem* showPicture(int width, int height);
  QQuickWindow* window() { return window_.get(); }
  QObject* child(const char* name);
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {});
  void type(const QString& text);
  void click(QPointF position);
  /// Draws until everything stands where it belongs.
  void settlePicture();

  /// What the picture knows of the desktop; nothing when it is empty.
  QQmlPropertyMap desktop;
  SimulatedUserDefaults defaults{std::make_shared<SimulatedUserDefaults::Store>()};
  /// What the clipboard holds; nothing for something else than text.
  std::optional<std::string> clipboardText;
  /// What the program put on the clipboard.
  std::vector<std::string> writtenTexts;
  TestKeychain keychain;

 private:
  SimulatedDirectories directories_;
  std::shared_ptr<TestMessenger> host_ = std::make_shared<TestMessenger>();
  std::shared_ptr<TestMessenger> screen_ = std::make_shared<TestMessenger>();
  Registration handler_;
  std::string entryPoint_;
  std::unique_ptr<ScreenProgram> program_;
  std::unique_ptr<QQmlEngine> engine_;
  std::unique_ptr<QQuickWindow> window_;
  std::unique_ptr<QQuickItem> picture_;
};

/// A copy as the host announces it.
Map capturedText(const std::string& text);

}  // namespace zephyx
