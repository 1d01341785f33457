#include "Platform/View.h"

#include <algorithm>
#include <cassert>

#include "Platform/ViewVisitor.h"

namespace zephyx {

View::~View() {
  for (const auto& child : children_) child->parent_ = nullptr;
}

void View::accept(ViewVisitor& visitor) {
  visitor.visitView(*this);
}

void View::setFrame(Rect frame) {
  if (frame == frame_) return;
  const bool isResized = frame.size != frame_.size;
  frame_ = frame;
  if (peer_) peer_->frameDidChange();
  if (!isResized) return;
  layout();
  setNeedsDisplay();
}

void View::addChild(std::shared_ptr<View> child) {
  assert(child && child.get() != this);
  child->removeFromParent();
  child->parent_ = this;
  children_.push_back(std::move(child));
  if (peer_) peer_->childrenDidChange();
}

void View::removeFromParent() {
  if (!parent_) return;
  auto& parent = *std::exchange(parent_, nullptr);
  auto& siblings = parent.children_;
  const auto place = std::find_if(siblings.begin(), siblings.end(),
                                  [this](const auto& each) { return each.get() == this; });
  assert(place != siblings.end());
  // The caller may hold no other owner.
  const auto keptAlive = std::move(*place);
  siblings.erase(place);
  if (parent.peer_) parent.peer_->childrenDidChange();
}

void View::setAlpha(double alpha, const std::optional<Animation>& animation) {
  if (alpha == alpha_ && animation) return;
  alpha_ = alpha;
  if (peer_) peer_->alphaDidChange(animation);
}

void View::setNeedsDisplay() {
  if (peer_) peer_->setNeedsDisplay();
}

Registration View::attachPeer(ViewPeer& peer) {
  peer_ = &peer;
  return Registration([this, &peer] {
    if (peer_ == &peer) peer_ = nullptr;
  });
}

}  // namespace zephyx
