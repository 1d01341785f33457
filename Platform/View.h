#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Platform/Geometry.h"
#include "Platform/Registration.h"

namespace zephyx {

class Canvas;
class ViewVisitor;

/// How a property moves to its new value.
struct Animation {
  enum class Timing { linear, easeInEaseOut };
  double seconds = 0;
  Timing timing = Timing::easeInEaseOut;
  bool operator==(const Animation&) const = default;
};

/// What shows one view on a desktop. Told after each change of the view. Main thread.
class ViewPeer {
 public:
  virtual ~ViewPeer() = default;
  virtual void frameDidChange() = 0;
  /// Children were added, removed or put in another order.
  virtual void childrenDidChange() = 0;
  /// Anything else than frame, children and alpha.
  virtual void propertiesDidChange() = 0;
  virtual void alphaDidChange(const std::optional<Animation>& animation) = 0;
  virtual void setNeedsDisplay() = 0;
};

/// A node of the host's own view tree: data that a platform shows through peers, in a menu row or
/// as a window's content. Frames are in the parent's coordinates, from its bottom-left corner;
/// where the user's language runs from right to left, the platform shows the whole tree in a
/// mirror, so "left" is the side on which lines begin. Only arcs, symbols and text keep their
/// direction. Children are drawn above their parent, later ones above earlier ones. Main thread.
class View {
 public:
  explicit View(Rect frame = {}) : frame_(frame) {}
  View(const View&) = delete;
  View& operator=(const View&) = delete;
  virtual ~View();

  /// Calls the visitor's method for this kind of view.
  virtual void accept(ViewVisitor& visitor);

  const Rect& frame() const { return frame_; }
  /// Of the content of a menu row or window, the platform keeps the origin, and sets the size when
  /// the row or window gets another. A row's height follows its view's, also in an open menu.
  void setFrame(Rect frame);
  Rect bounds() const { return {{0, 0}, frame_.size}; }

  /// Takes the child from its former parent. It is drawn above its siblings.
  void addChild(std::shared_ptr<View> child);
  void removeFromParent();
  const std::vector<std::shared_ptr<View>>& children() const { return children_; }
  /// Null for the root.
  View* parent() const { return parent_; }

  /// Hidden with all that is in it.
  bool isHidden() const { return isHidden_; }
  void setHidden(bool hidden) { set(isHidden_, hidden); }
  double alpha() const { return alpha_; }
  /// `alpha()` is the new value at once; the picture takes its time, or none without an animation.
  /// A later call for another value, or without an animation, replaces one that still runs.
  void setAlpha(double alpha, const std::optional<Animation>& animation = std::nullopt);
  const std::string& toolTip() const { return toolTip_; }
  void setToolTip(std::string text) { set(toolTip_, std::move(text)); }
  /// What assistive technology calls the view; it passes over views of the host's own drawing that
  /// have no name.
  const std::string& accessibilityLabel() const { return accessibilityLabel_; }
  void setAccessibilityLabel(std::string label) { set(accessibilityLabel_, std::move(label)); }
  /// What a gauge says, for assistive technology.
  const std::string& accessibilityValue() const { return accessibilityValue_; }
  void setAccessibilityValue(std::string value) { set(accessibilityValue_, std::move(value)); }

  /// Such a view is a button for keyboard and assistive technology: it can have the keyboard, and
  /// Space and Return click it in its middle. Clicks on labels, symbols and plain views in it are
  /// its own.
  bool acceptsClicks() const { return acceptsClicks_; }
  void setAcceptsClicks(bool accepts) { set(acceptsClicks_, accepts); }

  /// Draws the view again soon.
  void setNeedsDisplay();
  /// Lays the children out now.
  void relayout() { layout(); }

  // Hooks, called by the peer (and by tests in its place).

  /// Draws what is beneath the children; the canvas is clear.
  virtual void draw(Canvas& /*canvas*/) {}
  /// The pointer came over the view or a child of it, or left both.
  virtual void mouseEntered() {}
  virtual void mouseExited() {}
  virtual void clicked(Point /*position*/) {}
  /// Named colours have other pixels now; the view is drawn again afterwards.
  virtual void appearanceDidChange() {}

  /// From now on `peer` is told about changes, in the place of another that may be there. The view
  /// must outlive the registration.
  Registration attachPeer(ViewPeer& peer);

 protected:
  /// Sets the children's frames. Runs whenever the view got another size, and on request.
  virtual void layout() {}

  /// Sets a property that the peer shows.
  template <typename Value>
  void set(Value& property, Value value) {
    if (property == value) return;
    property = std::move(value);
    if (peer_) peer_->propertiesDidChange();
  }

 private:
  Rect frame_;
  bool isHidden_ = false;
  bool acceptsClicks_ = false;
  double alpha_ = 1;
  std::string toolTip_;
  std::string accessibilityLabel_;
  std::string accessibilityValue_;
  View* parent_ = nullptr;
  std::vector<std::shared_ptr<View>> children_;
  ViewPeer* peer_ = nullptr;
};

}  // namespace zephyx
