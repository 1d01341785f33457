#pragma once

#include <QtCore/QDeadlineTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTemporaryDir>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlPropertyMap>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Channel/MethodCall.h"
#include "Channel/MethodResult.h"
#include "Platform/Directories.h"
#include "Platform/Linux/Engines/ScreenProgram.h"
#include "Platform/UserDefaults.h"
#include "Tests/Screens/TestKeychain.h"
#include "Tests/Screens/TestMessenger.h"

namespace zephyx {

/// Runs the event loop until the condition holds; false when it does not within five seconds.
bool waitFor(const std::function<bool()>& condition);

class TestDefaults : public UserDefaults {
 public:
  std::optional<Bytes> data(const std::string&) const override { return std::nullopt; }
  std::optional<std::string> string(const std::string& key) const override;
  std::optional<bool> boolean(const std::string&) const override { return std::nullopt; }
  std::optional<double> number(const std::string&) const override { return std::nullopt; }
  void setData(const std::string&, BytesView) override {}
  void setString(const std::string& key, const std::string& value) override {
    strings[key] = value;
  }
  void setBoolean(const std::string&, bool) override {}
  void setNumber(const std::string&, double) override {}
  void removeObject(const std::string& key) override { strings.erase(key); }

  std::map<std::string, std::string> strings;
};

class TestDirectories : public Directories {
 public:
  explicit TestDirectories(std::string folder) : folder_(std::move(folder)) {}
  std::optional<std::string> applicationSupport() const override { return folder_; }
  std::string home() const override { return folder_; }

 private:
  std::string folder_;
};

/// A screen program with a host at the other end of its channel, and a picture when asked for.
class TestWorld {
 public:
  explicit TestWorld(std::string entryPoint);
  ~TestWorld();

  /// The program's own folder.
  std::string folder() const { return directory_.path().toStdString() + "/com.zephyx.app"; }
  void startProgram();
  void stopProgram();
  ScreenProgram* program() { return program_.get(); }

  /// Sends to the program, as bytes; the end of the call.
  MethodReply call(std::string_view method, const Value& arguments = {});
  /// The calls that the program made, in order.
  std::vector<MethodCall> calls;
  std::vector<MethodCall> callsOf(const std::string& method) const;
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
  TestDefaults defaults;
  /// What the clipboard holds; nothing for something else than text.
  std::optional<std::string> clipboardText;
  /// What the program put on the clipboard.
  std::vector<std::string> writtenTexts;
  TestKeychain keychain;

 private:
  QTemporaryDir directory_;
  TestDirectories directories_;
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
