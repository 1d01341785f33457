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
  EXPECT_TRUE(program_->leavePanel());
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
