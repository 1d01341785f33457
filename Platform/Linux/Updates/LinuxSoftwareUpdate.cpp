#include "Platform/Linux/Updates/LinuxSoftwareUpdate.h"

#include <QtCore/QUrl>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtGui/QTextDocument>
#include <QtGui/QWindow>
#include <utility>

#include "Platform/Dispatch.h"
#include "Platform/Linux/Updates/ReleaseNotes.h"
#include "Platform/Linux/Updates/UpdateCheck.h"
#include "Platform/Linux/Updates/UpdateDownload.h"
#include "Platform/Linux/Updates/UpdateWindow.h"
#include "Platform/Linux/Windows/WindowHints.h"
#include "Platform/SystemLog.h"

namespace zephyx {
namespace {

constexpr auto timeOfStart = std::chrono::minutes(1);

QString notesOf(const AppcastItem& item) {
  if (!item.notesArePlain) return limitedRichText(item.notes);
  return Qt::convertFromPlainText(item.notes);
}

}  // namespace

LinuxSoftwareUpdate::LinuxSoftwareUpdate(UpdateConfiguration configuration, UpdateDesktop desktop)
    : configuration_(std::move(configuration)),
      desktop_(std::move(desktop)),
      schedule_(desktop_.userDefaults, configuration_.interval) {
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
    timer_.start(configuration_.clockInterval);
    checkOnSchedule();
  });
}

LinuxSoftwareUpdate::~LinuxSoftwareUpdate() = default;

std::optional<std::string> LinuxSoftwareUpdate::unavailableReason() const {
  const auto reason = configuration_.unavailableReason();
  return reason ? std::optional(reason->toStdString()) : std::nullopt;
}

Registration LinuxSoftwareUpdate::start(SoftwareUpdateDelegate& delegate) {
  if (configuration_.unavailableReason()) return {};
  delegate_ = &delegate;
  sinceStart_.start();
  timer_.start(configuration_.startDelay);
  return Registration([this] { stop(); });
}

void LinuxSoftwareUpdate::stop() {
  delegate_ = nullptr;
  timer_.stop();
  check_.reset();
  download_.reset();
  window_.reset();
}

void LinuxSoftwareUpdate::checkForUpdates() {
  if (!delegate_) return;
  if (windowIsShown() && (check_ || download_ || found_)) return bringWindowToFront();
  isUserInitiated_ = true;
  if (found_) return showFound();
  showChecking();
  if (!check_) check();
}

void LinuxSoftwareUpdate::checkOnSchedule() {
  if (check_ || windowIsShown() || !schedule_.isDue(desktop_.dispatch.wallClock())) return;
  isUserInitiated_ = false;
  check();
}

void LinuxSoftwareUpdate::check() {
  schedule_.noteCheck(desktop_.dispatch.wallClock());
  if (!network_) network_ = std::make_unique<QNetworkAccessManager>();
  check_ = std::make_unique<UpdateCheck>(*network_, configuration_,
                                         [this](const UpdateChoice& choice) { checked(choice); });
}

void LinuxSoftwareUpdate::checked(const UpdateChoice& choice) {
  check_.reset();
  const auto* item = std::get_if<AppcastItem>(&choice);
  const auto* refusal = std::get_if<UpdateRefusal>(&choice);
  if (refusal) desktop_.log.log("[Updates] " + refusal->text.toStdString());
  if (!item && !refusal) {  // what was announced is on offer no more
    found_.reset();
    attend();
  }
  if (!isUserInitiated_) {
    if (item && !schedule_.isSkipped(item->version)) foundOnSchedule(*item);
    return;
  }
  if (item) {
    const bool isNews = !announced_ || *announced_ != item->displayVersion.toStdString();
    found_ = *item;
    if (isNews) willShow(true);
    return showFound();
  }
  if (refusal) return showEnd(QStringLiteral("Checking for updates failed"), refusal->text);
  showNoUpdate(std::get<NoUpdate>(choice));
}

void LinuxSoftwareUpdate::foundOnSchedule(const AppcastItem& item) {
  found_ = item;
  const bool isFocused = desktop_.isActive() &&
                         !sinceStart_.hasExpired(std::chrono::milliseconds(timeOfStart).count());
  const bool handled =
      !delegate_->supportsGentleScheduledUpdateReminders() ||
      delegate_->shouldHandleShowingScheduledUpdate(item.displayVersion.toStdString(), isFocused);
  willShow(handled);
  if (handled) showFound();
}

void LinuxSoftwareUpdate::willShow(bool handled) {
  announced_ = found_->displayVersion.toStdString();
  delegate_->willHandleShowingUpdate(
      handled, *announced_,
      {.stage = UpdateState::Stage::notDownloaded, .userInitiated = isUserInitiated_});
}

void LinuxSoftwareUpdate::attend() {
  if (const auto version = std::exchange(announced_, std::nullopt)) {
    delegate_->didReceiveUserAttention(*version);
  }
}

void LinuxSoftwareUpdate::showChecking() {
  const auto cancel = [this] {
    check_.reset();
    closeWindow();
  };
  showPage({.title = QStringLiteral("Checking for updates…"),
            .hasProgress = true,
            .buttons = {{QStringLiteral("Cancel"), cancel}},
            .dismissed = cancel});
}

void LinuxSoftwareUpdate::showFound() {
  const auto later = [this] {
    found_.reset();
    closeWindow();
  };
  const auto skip = [this, later] {
    schedule_.skip(found_->version);
    later();
  };
  const auto text =
      QStringLiteral("Zephyx %1 is now available, you have %2. Would you like to install it?")
          .arg(found_->displayVersion, configuration_.displayVersion);
  const bool hasLink = found_->notesLink.scheme() == QLatin1String("https");
  showPage({.title = QStringLiteral("A new version of Zephyx is available"),
            .text = text,
            .notes = notesOf(*found_),
            .notesLink = hasLink ? QString::fromUtf8(found_->notesLink.toEncoded()) : QString(),
            .buttons = {{QStringLiteral("Skip This Version"), skip, true},
                        {QStringLiteral("Remind Me Later"), later},
                        {QStringLiteral("Install Update"), [this] { install(); }}},
            .dismissed = later});
  if (isUserInitiated_) attend();  // the eyes are there already
}

void LinuxSoftwareUpdate::showEnd(const QString& title, const QString& text) {
  const auto close = [this] { closeWindow(); };
  showPage({.title = title,
            .text = text,
            .buttons = {{QStringLiteral("OK"), close}},
            .dismissed = close});
}

void LinuxSoftwareUpdate::showNoUpdate(const NoUpdate& none) {
  const auto have = QStringLiteral("Zephyx %1").arg(configuration_.displayVersion);
  showEnd(QStringLiteral("You’re up to date"),
          none.newest.isEmpty()
              ? have + QStringLiteral(" is the newest version available.")
              : have + QStringLiteral(" is newer than the newest version on offer, which is %1.")
                           .arg(none.newest));
}

void LinuxSoftwareUpdate::install() {
  const auto item = *std::exchange(found_, std::nullopt);
  const auto cancel = [this] {
    download_.reset();
    closeWindow();
  };
  showPage({.title = QStringLiteral("Downloading Zephyx %1…").arg(item.displayVersion),
            .text = QStringLiteral("Connecting…"),
            .hasProgress = true,
            .buttons = {{QStringLiteral("Cancel"), cancel}},
            .dismissed = cancel});
  UpdateDownload::Handlers handlers{
      .progressed =
          [this, length = item.length](qint64 received) { window_->setProgress(received, length); },
      .verifying =
          [this, cancel] {
            showPage({.title = QStringLiteral("Verifying the update…"),
                      .hasProgress = true,
                      .buttons = {{QStringLiteral("Cancel"), cancel}},
                      .dismissed = cancel});
          },
      .ended = [this](const auto& end) { downloaded(end); }};
  auto& dispatch = desktop_.dispatch;
  download_ = std::make_unique<UpdateDownload>(configuration_, item, dispatch.mainQueue(),
                                               dispatch.globalQueue(), std::move(handlers));
  download_->start(*network_);
}

void LinuxSoftwareUpdate::downloaded(const std::variant<QString, UpdateRefusal>& end) {
  download_.reset();
  if (const auto* refusal = std::get_if<UpdateRefusal>(&end)) {
    desktop_.log.log("[Updates] " + refusal->text.toStdString());
    return showEnd(QStringLiteral("The update was not installed"), refusal->text);
  }
  const auto& path = std::get<QString>(end);
  const auto close = [this] { closeWindow(); };
  showPage(
      {.title = QStringLiteral("The update is ready"),
       .text = QStringLiteral("It is genuine, and has been handed to your program for packages. "
                              "Once that has installed it, quit Zephyx and start it again."),
       .buttons = {{QStringLiteral("Show File"), [this, path] { desktop_.showInFolder(path); },
                    true},
                   {QStringLiteral("Close"), close}},
       .dismissed = close});
  desktop_.open(QUrl::fromLocalFile(path).toString());
}

void LinuxSoftwareUpdate::showPage(UpdatePage page) {
  if (!window_) {
    window_ = std::make_unique<UpdateWindow>();
    window_->onActivation = [this] {
      if (found_) attend();
    };
    window_->onLink = desktop_.open;
  }
  window_->setPage(std::move(page));
  if (!windowIsShown()) bringWindowToFront();
}

void LinuxSoftwareUpdate::bringWindowToFront() {
  if (!windowIsShown()) {
    if (const auto* screen = QGuiApplication::primaryScreen()) {
      window_->move(screen->availableGeometry().center() - window_->rect().center());
    }
    window_->winId();
    // The windows that it may be asked from are above others, too.
    desktop_.windowHints.prepareToMap(*window_->windowHandle(), {"_NET_WM_STATE_ABOVE"});
    window_->show();
  }
  window_->raise();
  desktop_.windowHints.activate(*window_->windowHandle());
}

void LinuxSoftwareUpdate::closeWindow() {
  window_->hide();
}

bool LinuxSoftwareUpdate::windowIsShown() const {
  return window_ && window_->isVisible();
}

}  // namespace zephyx
