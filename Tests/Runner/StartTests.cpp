#include "Runner/ClipboardPanelController.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

Lines startLines(const char* engineRuns) {
  return {"[Clipboard] initialize() start",
          std::string("[Clipboard] engine.run(clipboardMain) -> ") + engineRuns,
          "[Clipboard] FlutterViewController creado",
          "[Clipboard] plugins registrados",
          "[Clipboard] vista cargada (fondo transparente)",
          "[Clipboard] canal listo",
          "[Clipboard] monitor iniciado",
          "[Clipboard] buildPanel: alloc",
          "[Clipboard] buildPanel: panel alloc ok",
          "[Clipboard] buildPanel: props set",
          "[Clipboard] buildPanel: contenedor transparente + flutter, size=(560.0, 720.0)",
          "[Clipboard] panel construido",
          "[Clipboard] initialize() done — panel created: true"};
}

Lines bothPanels() {
  auto lines = startLines("true");
  lines.insert(lines.end(),
               {"[Translate] initialize() start", "[Translate] engine.run(translateMain) -> true",
                "[Translate] initialize() done — panel created: true"});
  return lines;
}

class StartTest : public HostTest {};

TEST_F(StartTest, RunsUntilQuitAndShowsTheMainWindow) {
  makeHost();
  EXPECT_FALSE(delegate->applicationShouldTerminateAfterLastWindowClosed());
  desktop.dispatch.mainQueue().asyncAfter(1, [this] {
    EXPECT_TRUE(mainWindow().isVisible());
    EXPECT_TRUE(mainWindow().isKeyWindow());
    EXPECT_FALSE(panel().isVisible());
    EXPECT_EQ(desktop.hotKeys.registered().size(), 9u);
    statusItem().openMenu();
    statusItem().choose("quitApp");
  });
  EXPECT_EQ(desktop.application.run(*delegate), 0);
  EXPECT_EQ(takeLog(), bothPanels());
}

TEST_F(StartTest, AnEngineThatDoesNotRunIsReportedAndThePanelStillOpens) {
  desktop.engines.refuseToRun("clipboard_engine");
  shared = std::make_unique<SharedObjects>(desktop.platform());
  ClipboardPanelController::shared().initialize();
  EXPECT_EQ(takeLog(), startLines("false"));
  ignoreLog("[Clipboard] showPanel: visible=true");
  ClipboardPanelController::shared().showPanel();
  EXPECT_TRUE(desktop.application.simulatedWindows().at(0)->isVisible());
}

TEST_F(StartTest, ThePanelIsMadeOnceAndAtTheLatestWhenItIsShown) {
  shared = std::make_unique<SharedObjects>(desktop.platform());
  ClipboardPanelController::shared().showPanel();
  auto expected = startLines("true");
  expected.insert(expected.begin(), "[Clipboard] showPanel: panel nil → reintentando initialize()");
  auto lines = takeLog();
  lines.pop_back();
  EXPECT_EQ(lines, expected);
  desktop.dispatch.settle();
  EXPECT_EQ(panelScreen().callsOf("clipboardPanelShown").size(), 1u);
  ClipboardPanelController::shared().initialize();
  EXPECT_EQ(desktop.application.windows().size(), 1u);
}

}  // namespace
}  // namespace zephyx
