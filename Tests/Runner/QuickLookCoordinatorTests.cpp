#include "Runner/QuickLookCoordinator.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

class QuickLookCoordinatorTest : public HostTest {
 protected:
  void SetUp() override {
    shared = std::make_unique<SharedObjects>(desktop.platform());
    coordinator().onPanelClosed = [this] { ++closings_; };
  }
  QuickLookCoordinator& coordinator() { return QuickLookCoordinator::shared(); }

  int closings_ = 0;
};

TEST_F(QuickLookCoordinatorTest, StaysAboveTheFloatingPanelsAlsoOnceItIsOnScreen) {
  coordinator().present("file:///a.png");
  EXPECT_EQ(desktop.previewPanel.levels().size(), 2u);
  desktop.dispatch.settle();
  EXPECT_EQ(desktop.previewPanel.levels().size(), 3u);
  EXPECT_THAT(desktop.previewPanel.levels(), Each(26));
}

TEST_F(QuickLookCoordinatorTest, SpaceAndEscapeCloseItOnceAndOtherEventsGoOn) {
  for (const auto key : {keyCode::space, keyCode::escape}) {
    closings_ = 0;
    coordinator().present("file:///a.png");
    EXPECT_FALSE(desktop.previewPanel.receive({EventType::keyDown, 0, keyCode::leftArrow}));
    EXPECT_FALSE(desktop.previewPanel.receive({EventType::leftMouseDown, 0, key}));
    EXPECT_TRUE(desktop.previewPanel.isVisible());
    EXPECT_TRUE(desktop.previewPanel.receive({EventType::keyDown, 0, key}));
    EXPECT_FALSE(desktop.previewPanel.isVisible());
    EXPECT_EQ(closings_, 1);
  }
  EXPECT_EQ(coordinator().previewItemAt(0), "file:///a.png");
}

TEST_F(QuickLookCoordinatorTest, TheUsersOwnCloseIsReportedOnceHoweverOftenFilesWerePresented) {
  for (int round = 1; round <= 3; ++round) {
    coordinator().present("file:///a.png");
    desktop.previewPanel.closeByUser();
    EXPECT_EQ(closings_, round);
  }
  coordinator().onPanelClosed = nullptr;
  coordinator().present("file:///a.png");
  desktop.previewPanel.closeByUser();
}

TEST_F(QuickLookCoordinatorTest, ItsEndLeavesAPreviewThatAsksNobody) {
  coordinator().present("file:///a.png");
  shared.reset();
  desktop.dispatch.settle();
  desktop.previewPanel.reloadData();
  EXPECT_EQ(desktop.previewPanel.shownItem(), std::nullopt);
  desktop.previewPanel.closeByUser();
  EXPECT_EQ(closings_, 0);
}

}  // namespace
}  // namespace zephyx
