#include <regex>
#include <string>

#include "Tests/Desktop/DesktopRamps.h"
#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {
namespace {

using Ramp = DesktopRamps::Ramp;

class ProgramBrightnessTest : public ProgramTest {
 protected:
  static void SetUpTestSuite() {
    startDesktop({.tray = true});
    witness_ = std::make_unique<DesktopRamps>();
  }
  static void TearDownTestSuite() {
    witness_.reset();
    ProgramTest::TearDownTestSuite();
  }

  // Quit, Settings, Import, Export, Show and the two locks. Disabled rows are passed over.
  static constexpr int rowsBelowSlider = 7;

  static Ramp shown() { return witness_->ramp(witness_->outputs().at(0)); }
  static void userSets(const Ramp& ramp) { witness_->setRamp(witness_->outputs().at(0), ramp); }
  [[nodiscard]] static bool becomes(const Ramp& ramp) {
    return waitFor([&] { return DesktopRamps::distance(shown(), ramp) <= 1; });
  }
  /// As it stands in the settings file.
  std::string storedLevel() {
    const auto settings = readFile(desktop().configHome() / "com.zephyx.app" / "defaults.json");
    std::smatch match;
    static const std::regex level(R"("externalBrightness\.v1":\s*\{\s*"number":\s*([^\s}]+))");
    return std::regex_search(settings, match, level) ? match[1].str() : "";
  }
  void moveSlider(key::Code key) {
    ASSERT_TRUE(program().openMenu());
    for (int row = 0; row <= rowsBelowSlider; ++row) input().tap(key::Up);
    input().tap(key);
  }

 private:
  static std::unique_ptr<DesktopRamps> witness_;
};

std::unique_ptr<DesktopRamps> ProgramBrightnessTest::witness_;

TEST_F(ProgramBrightnessTest, TheSliderDimsAndWhatTheUserHadComesBackAlsoAfterTheProgramWasKilled) {
  const auto warm = DesktopRamps::linear(1, 0.8, 0.5);
  const auto darkest = DesktopRamps::linear(0.15, 0.12, 0.075);
  userSets(warm);
  moveSlider(key::Home);
  EXPECT_TRUE(becomes(darkest));
  input().tap(key::End);
  EXPECT_TRUE(becomes(warm));
  input().tap(key::Home);
  EXPECT_TRUE(becomes(darkest));
  EXPECT_TRUE(program().leaveMenu());
  EXPECT_TRUE(waitFor([&] { return storedLevel() == "0"; }));

  program().process().kill();
  EXPECT_LE(DesktopRamps::distance(shown(), darkest), 1);
  startProgram();
  EXPECT_TRUE(becomes(warm));

  // The level is the last one, so a step up is still dark.
  moveSlider(key::Right);
  EXPECT_TRUE(waitFor([&] { return shown() != warm; }));
  EXPECT_LT(shown()[0].back(), 16384);
  EXPECT_TRUE(program().leaveMenu());
  program().process().terminate();
  EXPECT_TRUE(becomes(warm));
  startProgram();

  // A killed one, and the user has set another ramp before the next start.
  moveSlider(key::Home);
  EXPECT_TRUE(becomes(darkest));
  program().process().kill();
  const auto cold = DesktopRamps::linear(1, 1, 0.9);
  userSets(cold);
  startProgram();
  EXPECT_TRUE(holdsFor([&] { return shown() == cold; }, std::chrono::milliseconds(200)));
}

}  // namespace
}  // namespace zephyx
