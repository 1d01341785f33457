#include "Platform/Pasteboard.h"
#include "Runner/SelectionCapture.h"
#include "Tests/Desktop/CaptureTest.h"
#include "Tests/Desktop/TargetProgram.h"

namespace zephyx {
namespace {

class CaptureWithoutPermissionTest : public CaptureTest {
 protected:
  CaptureWithoutPermissionTest() { options_.serverArguments = {"-extension", "XTEST"}; }
};

TEST_F(CaptureWithoutPermissionTest, TakesTheTextThatIsOnTheClipboard) {
  const TargetProgram target(desktop(), TargetProgram::Kind::Qt, "selected");
  const auto count = platform().pasteboard().changeCount();
  desktop().copy("on the clipboard");
  ASSERT_TRUE(runUntil([&] { return platform().pasteboard().changeCount() > count; }));
  std::optional<std::string> text;
  SelectionCapture::capture([&](std::optional<std::string> captured) { text = captured; });
  EXPECT_TRUE(runUntil([&] { return text.has_value(); }));
  EXPECT_EQ(text, "on the clipboard");
}

}  // namespace
}  // namespace zephyx
