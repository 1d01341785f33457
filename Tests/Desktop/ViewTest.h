#pragma once

#include <gtest/gtest.h>

#include <QtCore/QPoint>
#include <memory>
#include <ostream>
#include <string>

#include "Platform/Platform.h"
#include "Platform/View.h"
#include "Tests/Desktop/RunUntil.h"
#include "Tests/Desktop/VirtualDesktop.h"

class QMenu;
class QWidget;

namespace zephyx {

/// How the desktop shows things.
struct ViewAppearance {
  const char* name;
  int scale;
  bool isMirrored;
};

inline void PrintTo(const ViewAppearance& appearance, std::ostream* stream) {
  *stream << appearance.name;
}

/// For the last arguments of INSTANTIATE_TEST_SUITE_P.
inline const auto viewAppearances =
    testing::Values(ViewAppearance{"Plain", 1, false}, ViewAppearance{"MirroredTwice", 2, true});
inline std::string viewAppearanceName(const testing::TestParamInfo<ViewAppearance>& info) {
  return info.param.name;
}

/// The host's views on a real desktop, with a user's hand on the mouse and the keyboard.
class ViewTest : public testing::TestWithParam<ViewAppearance> {
 protected:
  void SetUp() override;
  void TearDown() override;

  Platform& platform() { return *platform_; }
  VirtualDesktop& desktop() { return *desktop_; }
  DesktopInput& input() { return desktop_->input(); }

  bool menuIsOpen();
  /// The open menu; null when there is none.
  static QMenu* menu();
  /// The widget that shows a view, by the name that assistive technology has for it.
  static QWidget* shown(const std::string& name);
  static QWidget* shown(const View& view) { return shown(view.accessibilityLabel()); }
  /// The pointer goes to a place in a widget, or on the desktop; from right to left where lines do.
  void pointAt(const QWidget& widget);
  void pointAt(QPoint place);
  void click(const QWidget& widget);
  void clickAt(QPoint place);
  /// A checksum of what the server shows of a widget.
  static std::size_t pixels(const QWidget& widget);

  int height_ = 600;  ///< of the screen, in points

 private:
  std::unique_ptr<VirtualDesktop> desktop_;
  std::unique_ptr<Platform> platform_;
};

}  // namespace zephyx
