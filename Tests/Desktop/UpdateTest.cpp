#include "Tests/Desktop/UpdateTest.h"

#include <QtCore/QDir>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTextBrowser>
#include <utility>

#include "Platform/Linux/Updates/UpdateWindow.h"

namespace zephyx {

UpdateTest::UpdateTest() : desktop_(std::make_unique<VirtualDesktop>()) {
  desktop_->enter();
  watch_ = DesktopWatch::open();
  static char name[] = "desktop_update_tests";
  static char* arguments[] = {name, nullptr};
  toolkit_ = std::make_unique<Toolkit>(1, arguments);
  watch_->start();
  hints_ = std::make_unique<WindowHints>(*watch_);
  dispatch_ = std::make_unique<LinuxDispatch>();
  defaults_ = std::make_unique<LinuxUserDefaults>(desktop_->configHome().string(), log_);
  server_ = std::make_unique<HttpsServer>(desktop_->home(), HttpsServer::Protocol::http);
  feed_ = std::make_unique<UpdateFeed>(*server_);
}

UpdateTest::~UpdateTest() {
  stop();
  dispatch_->finishWork();
}

UpdateConfiguration UpdateTest::configuration(const QString& feed) const {
  UpdateConfiguration result;
  result.feed = QUrl(feed);
  result.publicKey = feed_->publicKey();
  result.version = QStringLiteral("1.0");
  result.displayVersion = QStringLiteral("1.0");
  result.systems = {QStringLiteral("linux")};
  result.folder = QString::fromStdString((desktop_->home() / "downloads").string());
  result.startDelay = std::chrono::hours(1);
  return result;
}

UpdateConfiguration UpdateTest::checkingAtOnce() const {
  auto result = configuration();
  result.startDelay = {};
  return result;
}

void UpdateTest::start(UpdateConfiguration configuration) {
  stop();
  updates_ = std::make_unique<LinuxSoftwareUpdate>(
      std::move(configuration),
      UpdateDesktop{.userDefaults = *defaults_,
                    .dispatch = *dispatch_,
                    .log = log_,
                    .windowHints = *hints_,
                    .isActive = [this] { return isInFront; },
                    .open = [this](const QString& url) { opened.push_back(url); },
                    .showInFolder = [](const QString&) {}});
  checks_ = updates_->start(*this);
}

void UpdateTest::stop() {
  checks_.reset();
  updates_.reset();
}

QWidget* UpdateTest::window() {
  for (auto* widget : QApplication::topLevelWidgets()) {
    if (qobject_cast<UpdateWindow*>(widget) && widget->isVisible()) return widget;
  }
  return nullptr;
}

std::string UpdateTest::words() {
  QStringList words;
  if (!window()) return {};
  for (const auto* label : window()->findChildren<QLabel*>()) {
    if (label->isVisible()) words.push_back(label->text());
  }
  for (const auto* notes : window()->findChildren<QTextBrowser*>()) {
    if (notes->isVisible()) words.push_back(notes->toPlainText());
  }
  return words.join(QLatin1Char('\n')).toStdString();
}

bool UpdateTest::waitForWords(const std::string& part) {
  const bool found = runUntil([&] { return words().find(part) != std::string::npos; });
  if (!found) ADD_FAILURE() << "no \"" << part << "\" in: " << words();
  return found;
}

QPushButton* UpdateTest::button(const char* label) {
  if (!window()) return nullptr;
  for (auto* button : window()->findChildren<QPushButton*>()) {
    if (button->isVisible() && button->text() == QLatin1String(label)) return button;
  }
  return nullptr;
}

void UpdateTest::press(const char* label) {
  ASSERT_TRUE(runUntil([&] { return button(label) != nullptr; })) << label;
  button(label)->click();
}

QStringList UpdateTest::filesInFolder() const {
  return QDir(configuration().folder).entryList(QDir::Files | QDir::Hidden);
}

bool UpdateTest::shouldHandleShowingScheduledUpdate(const std::string& version, bool focus) {
  told.push_back("found " + version + (focus ? " in focus" : " in the background"));
  return focus;
}

void UpdateTest::willHandleShowingUpdate(bool handled, const std::string& version,
                                         const UpdateState& state) {
  told.push_back((handled ? "window for " : "reminder of ") + version +
                 (state.userInitiated ? ", asked for" : ""));
}

void UpdateTest::didReceiveUserAttention(const std::string& version) {
  told.push_back("seen " + version);
}

}  // namespace zephyx
