#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {

std::unique_ptr<VirtualDesktop> ProgramTest::desktop_;
std::unique_ptr<ZephyxProcess> ProgramTest::program_;

void ProgramTest::startDesktop(const VirtualDesktopOptions& options) {
  desktop_ = std::make_unique<VirtualDesktop>(options);
  desktop_->enter();
  startProgram();
}

void ProgramTest::startProgram(const Environment& additions) {
  program_ = std::make_unique<ZephyxProcess>(*desktop_, additions);
  if (!program_->waitUntilReady())
    throw std::runtime_error("the program did not get ready; its log:\n" + program_->log());
}

void ProgramTest::TearDownTestSuite() {
  program_.reset();
  desktop_.reset();
}

void ProgramTest::SetUp() {
  ASSERT_TRUE(program_ && program_->process().isRunning());
  lastIdBefore_ = program_->history().lastId();
}

void ProgramTest::TearDown() {
  if (!program_) return;
  if (HasFailure()) {
    desktop_->screenshot(
        std::filesystem::path("failures") /
        (std::string(testing::UnitTest::GetInstance()->current_test_info()->name()) + ".png"));
    std::cerr << "The program's log:\n" << program_->log();
  }
  // The first Escape may only take back a search.
  for (int presses = 0; program_->panel() && presses < 3; ++presses) {
    input().tap(key::Escape);
    (void)waitFor([&] { return !program_->panel(); }, std::chrono::seconds(1));
  }
  EXPECT_FALSE(program_->panel());
}

bool ProgramTest::panelHasKeyboard() {
  const auto panel = program_->panel();
  return panel && windows().active() == panel->id && windows().focused() == panel->id;
}

bool ProgramTest::openPanel() {
  input().chord({key::Shift, key::Super, key::V});
  return waitFor([&] { return panelHasKeyboard(); });
}

bool ProgramTest::waitUntilPanelIsGone() {
  return waitFor([&] { return !program_->panel(); });
}

bool ProgramTest::openMenu() {
  return waitFor([&] {
    const auto icon = program_->trayIcon();
    if (!icon) return false;
    input().click(icon->centerX(), icon->centerY());
    // It is drawn once it has the keyboard.
    return waitFor(
        [&] {
          const auto menu = program_->menu();
          return menu && windows().distinctColors(*menu) > 8;
        },
        std::chrono::seconds(1));
  });
}

bool ProgramTest::waitUntilMenuIsGone() {
  return waitFor([&] { return !program_->menu(); });
}

std::vector<HistoryRow> ProgramTest::newEntries() const {
  auto rows = program_->history().rows();
  std::erase_if(rows, [&](const HistoryRow& row) { return row.id <= lastIdBefore_; });
  return rows;
}

bool ProgramTest::waitForNewEntries(std::size_t count) const {
  return waitFor([&] { return newEntries().size() >= count; }, std::chrono::seconds(10));
}

}  // namespace zephyx
