#include <gmock/gmock.h>

#include "Platform/Label.h"
#include "Platform/PushButton.h"
#include "Tests/Runner/RecordingPeer.h"

namespace zephyx {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Lines its children up, and can be told to do something meanwhile.
class Row final : public View {
 public:
  std::function<void()> onLayout;

 protected:
  void layout() override {
    double x = 0;
    for (const auto& child : std::vector(children())) {
      child->setFrame({{x, 0}, {10, bounds().size.height}});
      x += 10;
    }
    if (onLayout) onLayout();
  }
};

TEST(ViewTest, LaysOutWhenItsSizeChangesAndOnRequestOnly) {
  Row row;
  const auto first = std::make_shared<View>();
  const auto second = std::make_shared<View>();
  row.addChild(first);
  row.setFrame({{5, 5}, {100, 20}});
  EXPECT_EQ(first->frame(), (Rect{{0, 0}, {10, 20}}));
  row.addChild(second);
  row.setFrame({{7, 5}, {100, 20}});
  EXPECT_EQ(second->frame(), Rect{});
  row.relayout();
  EXPECT_EQ(second->frame(), (Rect{{10, 0}, {10, 20}}));
}

TEST(ViewTest, ItsPeerHearsEachChangeOnce) {
  Label label;
  RecordingPeer peer(label);
  const auto child = std::make_shared<View>();
  const Animation fade{.seconds = 0.2};
  const Rect atOrigin{{0, 0}, {5, 5}};
  const Rect besideIt{{1, 0}, {5, 5}};
  const std::tuple<const char*, std::function<void()>, std::vector<std::string>> cases[] = {
      {"size", [&] { label.setFrame(atOrigin); }, {"frame", "display"}},
      {"same frame", [&] { label.setFrame(atOrigin); }, {}},
      {"place", [&] { label.setFrame(besideIt); }, {"frame"}},
      {"hidden", [&] { label.setHidden(true); }, {"properties"}},
      {"hidden again", [&] { label.setHidden(true); }, {}},
      {"text", [&] { label.setText("42 %"); }, {"properties"}},
      {"same text", [&] { label.setText("42 %"); }, {}},
      {"fade out", [&] { label.setAlpha(0, fade); }, {"alpha animated"}},
      {"fade out while it does", [&] { label.setAlpha(0, fade); }, {}},
      {"be out now", [&] { label.setAlpha(0); }, {"alpha"}},
      {"child", [&] { label.addChild(child); }, {"children"}},
      {"no child", [&] { child->removeFromParent(); }, {"children"}},
      {"display", [&] { label.setNeedsDisplay(); }, {"display"}},
  };
  for (const auto& [what, change, heard] : cases) {
    SCOPED_TRACE(what);
    change();
    EXPECT_EQ(peer.take(), heard);
  }
}

TEST(ViewTest, AChildHasOneParentAndOutlivesIt) {
  const auto child = std::make_shared<View>();
  View second;
  {
    View first;
    RecordingPeer peer(first);
    first.addChild(child);
    second.addChild(child);
    EXPECT_THAT(first.children(), IsEmpty());
    EXPECT_THAT(second.children(), ElementsAre(child));
    EXPECT_EQ(child->parent(), &second);
    EXPECT_THAT(peer.take(), ElementsAre("children", "children"));
    first.addChild(child);
  }
  EXPECT_EQ(child->parent(), nullptr);
}

TEST(ViewTest, ChildrenMayGoWhileTheyAreLaidOutOrUsed) {
  Row row;
  auto button = std::make_shared<PushButton>("Leave");
  const auto* asView = button.get();
  int clicks = 0;
  button->onClick = [&, asView] {
    ++clicks;
    for (const auto& child : std::vector(row.children())) {
      if (child.get() == asView) child->removeFromParent();
    }
  };
  row.addChild(button);
  row.addChild(std::make_shared<View>());
  row.onLayout = [&] {
    if (row.children().size() == 2) row.children().back()->removeFromParent();
  };
  row.relayout();
  EXPECT_THAT(row.children(), ElementsAre(button));

  const std::weak_ptr<PushButton> remains = button;
  button->click();
  button.reset();
  EXPECT_EQ(clicks, 1);
  EXPECT_TRUE(remains.expired());
}

}  // namespace
}  // namespace zephyx
