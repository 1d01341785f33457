#pragma once

#include <algorithm>

#include "Platform/Application.h"
#include "Platform/NotificationCenter.h"
#include "Platform/Window.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

/// Windows, key status, and the notifications about it.
class WindowContract : public ContractTest {
 protected:
  Application& application() { return platform().application(); }
  NotificationCenter& center() { return platform().defaultNotificationCenter(); }

  std::shared_ptr<Window> makeWindow(WindowKind kind = WindowKind::panel) {
    return application().makeWindow({.kind = kind, .contentRect = {{100, 100}, {300, 200}}});
  }

  void show(Window& window) {
    window.makeKeyAndOrderFront();
    application().activateIgnoringOtherApps();
    ASSERT_TRUE(becomesTrue([&] { return window.isKeyWindow(); }));
  }

  Registration record(const char* name, const Window* window, std::vector<std::string>& log,
                      const std::string& line) {
    return center().addObserver(name, window ? window->notificationObject() : nullptr,
                                [&log, line] { log.push_back(line); });
  }
};

TEST_P(WindowContract, ShowsHidesAndKeepsItsFrame) {
  const auto window = makeWindow();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(window->frame(), (Rect{{100, 100}, {300, 200}}));
  const Rect frame{{220, 140}, {420, 310}};
  window->setFrame(frame);
  EXPECT_EQ(window->frame(), frame);
  show(*window);
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(becomesTrue([&] { return window->frame() == frame; }));
  window->orderOut();
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(becomesTrue([&] { return !window->isKeyWindow(); }));
  show(*window);
  EXPECT_TRUE(becomesTrue([&] { return window->frame() == frame; }));
}

TEST_P(WindowContract, KeyStatusMovesBetweenTheHostsWindowsWithItsNotifications) {
  const auto first = makeWindow(WindowKind::window);
  const auto second = makeWindow();
  show(*first);
  EXPECT_EQ(application().keyWindow(), first);

  std::vector<std::string> log;
  const auto resign = record(notification::windowDidResignKey, first.get(), log, "first resigned");
  const auto become = record(notification::windowDidBecomeKey, second.get(), log, "second became");
  const auto foreign = record(notification::windowDidBecomeKey, first.get(), log, "first became");
  const auto inactive =
      record(notification::applicationDidResignActive, nullptr, log, "application resigned");
  show(*second);
  EXPECT_TRUE(becomesTrue([&] { return log.size() >= 2; }));
  EXPECT_EQ(log, (std::vector<std::string>{"first resigned", "second became"}));
  EXPECT_EQ(application().keyWindow(), second);
}

TEST_P(WindowContract, AnotherApplicationTakesTheKeyStatusAway) {
  desktop().startOtherApplication();
  const auto window = makeWindow();
  EXPECT_FALSE(application().isActive());
  show(*window);
  EXPECT_TRUE(application().isActive());
  std::vector<std::string> log;
  bool wasActiveThen = true;
  const auto ask =
      center().addObserver(notification::windowDidResignKey, window->notificationObject(),
                           [&] { wasActiveThen = application().isActive(); });
  const auto resign = record(notification::windowDidResignKey, window.get(), log, "resigned");
  const auto inactive =
      record(notification::applicationDidResignActive, nullptr, log, "application resigned");
  desktop().bringOtherApplicationToFront();
  EXPECT_TRUE(becomesTrue([&] { return !log.empty(); }));
  desktop().pass(0.3);
  EXPECT_EQ(log, (std::vector<std::string>{"resigned", "application resigned"}));
  EXPECT_FALSE(wasActiveThen);
  EXPECT_FALSE(application().isActive());
  EXPECT_FALSE(window->isKeyWindow());
  EXPECT_EQ(application().keyWindow(), nullptr);
  EXPECT_TRUE(window->isVisible());
}

TEST_P(WindowContract, ObserversRunInOrderAndMayDropAndAddObservationsMeanwhile) {
  const auto window = makeWindow();
  std::vector<std::string> log;
  Registration dropsItself;
  Registration droppedByOther;
  Registration added;
  const auto* object = window->notificationObject();
  const auto* name = notification::windowDidBecomeKey;
  dropsItself = center().addObserver(name, object, [&] {
    log.push_back("one");
    dropsItself.reset();
    droppedByOther.reset();
    added = record(name, window.get(), log, "added");
  });
  droppedByOther = record(name, window.get(), log, "dropped");
  const auto last = record(name, nullptr, log, "any object");
  show(*window);
  EXPECT_TRUE(becomesTrue([&] { return log.size() >= 2; }));
  log.erase(std::remove(log.begin(), log.end(), "added"), log.end());  // free to hear this one
  EXPECT_EQ(log, (std::vector<std::string>{"one", "any object"}));
}

INSTANTIATE_TEST_SUITE_P(Desktops, WindowContract, contractDesktops(), contractRunName);

}  // namespace zephyx
