#pragma once

class QWidget;

namespace zephyx {

/// The side of a widget that shows one kind of view.
class ViewWidget {
 public:
  virtual ~ViewWidget() = default;
  virtual QWidget& widget() = 0;
  /// Brings what this kind of view adds to all views in line with the view. Called after changes of
  /// the view and of the appearance.
  virtual void showView() = 0;
};

}  // namespace zephyx
