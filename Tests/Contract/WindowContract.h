#pragma once

#include <algorithm>

#include "Platform/Application.h"
#include "Platform/NotificationCenter.h"
#include "Platform/View.h"
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

TEST_P(WindowContract, ListsLivingWindowsInTheOrderOfTheirCreation) {
  const auto first = makeWindow(WindowKind::window);
  auto second = makeWindow();
  const auto third = makeWindow();
  EXPECT_EQ(application().windows(), (std::vector<std::shared_ptr<Window>>{first, second, third}));
  second.reset();
  EXPECT_EQ(application().windows(), (std::vector<std::shared_ptr<Window>>{first, third}));
}

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

TEST_P(WindowContract, CentersOnTheMainScreen) {
  const auto window = makeWindow();
  window->center();
  const auto& screens = platform().screens();
  ASSERT_GE(screens.mainScreenIndex(), 0);
  const auto screen = screens.screens().at(static_cast<std::size_t>(screens.mainScreenIndex()));
  EXPECT_NEAR(window->frame().midX(), screen.visibleFrame.midX(), 2);
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

TEST_P(WindowContract, AWindowThatCannotBecomeKeyNeverDoes) {
  const auto window = application().makeWindow(
      {.kind = WindowKind::panel, .contentRect = {{50, 50}, {200, 100}}, .canBecomeKey = false});
  window->makeKeyAndOrderFront();
  application().activateIgnoringOtherApps();
  desktop().pass(0.3);
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(window->isKeyWindow());
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

TEST_P(WindowContract, AContentViewHasTheWindowsSizeUntilItIsTakenOut) {
  const auto window = makeWindow();
  auto view = std::make_shared<View>();
  window->setContentView(view);
  EXPECT_EQ(view->frame(), (Rect{{0, 0}, {300, 200}}));
  show(*window);
  window->setFrame({{120, 120}, {340, 260}});
  EXPECT_TRUE(becomesTrue([&] { return view->bounds().size == Size{340, 260}; }));

  const auto next = std::make_shared<View>();
  window->setContentView(next);
  EXPECT_EQ(next->bounds().size, (Size{340, 260}));
  EXPECT_TRUE(window->isVisible());
  window->setContentView(nullptr);
  window->setFrame({{120, 120}, {300, 200}});
  EXPECT_EQ(next->bounds().size, (Size{340, 260}));
  const std::weak_ptr<View> remains = view;
  view.reset();
  EXPECT_TRUE(becomesTrue([&] { return remains.expired(); }));
}

TEST_P(WindowContract, NamesTheFirstResponder) {
  const auto window = makeWindow();
  EXPECT_EQ(window->firstResponderDescription(), "nil");
}

}  // namespace zephyx
