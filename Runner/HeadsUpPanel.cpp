#include "Runner/HeadsUpPanel.h"

#include "Platform/Application.h"
#include "Platform/Canvas.h"
#include "Platform/Dispatch.h"
#include "Platform/Platform.h"
#include "Platform/View.h"
#include "Platform/Window.h"
#include "Runner/PointerScreen.h"

namespace zephyx {
namespace {

constexpr double backgroundAlpha = 0.78;
constexpr double distanceFromBottom = 0.12;  // of the screen's height
constexpr Animation appearing{.seconds = 0.12};
constexpr Animation disappearing{.seconds = 0.25};

class Card final : public View {
 public:
  Card(const std::shared_ptr<View>& content, double cornerRadius)
      : View(content->bounds()), cornerRadius_(cornerRadius) {
    addChild(content);
    setAlpha(0);
  }

  void draw(Canvas& canvas) override {
    canvas.fillRoundedRect(bounds(), cornerRadius_, color::black.withAlpha(backgroundAlpha));
  }

 private:
  double cornerRadius_;
};

}  // namespace

HeadsUpPanel::HeadsUpPanel(Platform& platform, const std::shared_ptr<View>& content,
                           double cornerRadius)
    : platform_(platform),
      card_(std::make_shared<Card>(content, cornerRadius)),
      window_(platform.application().makeWindow({
          .kind = WindowKind::panel,
          .contentRect = card_->bounds(),
          .styleMask = styleMask::borderless,
          .level = windowLevel::status,
          .collectionBehavior = collectionBehavior::moveToActiveSpace |
                                collectionBehavior::transient | collectionBehavior::ignoresCycle |
                                collectionBehavior::fullScreenAuxiliary,
          .floatingPanel = true,
          .transparentBackground = true,
          .hasShadow = false,
          .ignoresMouseEvents = true,
          .canBecomeKey = false,
          .canBecomeMain = false,
      })) {
  window_->setContentView(card_);
}

HeadsUpPanel::~HeadsUpPanel() {
  window_->orderOut();
}

void HeadsUpPanel::fadeIn() {
  leaving_.reset();
  place();
  window_->orderFrontRegardless();
  card_->setAlpha(1, appearing);
}

void HeadsUpPanel::fadeOut() {
  card_->setAlpha(0, disappearing);
  leaving_ = scheduleOnce(platform_.dispatch().mainQueue(), disappearing.seconds,
                          [this] { window_->orderOut(); });
}

void HeadsUpPanel::place() {
  const auto size = card_->bounds().size;
  const auto screen = pointerScreen(platform_.screens());
  if (!screen) return window_->center();
  const auto& visible = screen->visibleFrame;
  window_->setFrame({{visible.midX() - size.width / 2,
                      visible.origin.y + distanceFromBottom * visible.size.height},
                     size});
}

}  // namespace zephyx
