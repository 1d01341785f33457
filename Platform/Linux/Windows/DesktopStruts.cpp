#include "Platform/Linux/Windows/DesktopStruts.h"

#include <algorithm>
#include <cstring>

#include "Platform/Linux/X11.h"

namespace zephyx {
namespace {

constexpr std::uint32_t strutItems = 12;

bool overlaps(int start, int end, int from, int to) {
  return start < to && end >= from;
}

}  // namespace

DesktopStruts DesktopStruts::read(X11Connection& connection) {
  auto* c = connection.get();
  const auto size = xcb_get_geometry(c, connection.root());
  const auto property = connection.atom("_NET_WM_STRUT_PARTIAL");
  const auto windows = connection.property32(connection.root(), "_NET_CLIENT_LIST");
  std::vector<xcb_get_property_cookie_t> questions;
  questions.reserve(windows.size());
  for (const auto window : windows) {
    questions.push_back(xcb_get_property(c, 0, window, property, XCB_ATOM_CARDINAL, 0, strutItems));
  }

  std::vector<Strut> struts;
  const XReply<xcb_get_geometry_reply_t> display(xcb_get_geometry_reply(c, size, nullptr));
  for (const auto& question : questions) {
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(c, question, nullptr));
    if (!reply || reply->format != 32 || reply->value_len != strutItems) continue;
    Strut strut;
    static_assert(sizeof strut == strutItems * sizeof(std::uint32_t));
    std::memcpy(&strut, xcb_get_property_value(reply.get()), sizeof strut);
    struts.push_back(strut);
  }
  return {display ? QSize(display->width, display->height) : QSize(), std::move(struts)};
}

QRect DesktopStruts::availableIn(QRect screen) const {
  int left = screen.left();
  int top = screen.top();
  int right = screen.left() + screen.width();
  int bottom = screen.top() + screen.height();
  const int screenRight = right;
  const int screenBottom = bottom;

  // A strut beyond the far edge belongs to a dock between two screens, on the other one.
  for (const auto& strut : struts_) {
    if (strut.left < screenRight &&
        overlaps(strut.leftStart, strut.leftEnd, screen.top(), screenBottom)) {
      left = std::max(left, strut.left);
    }
    if (display_.width() - strut.right > screen.left() &&
        overlaps(strut.rightStart, strut.rightEnd, screen.top(), screenBottom)) {
      right = std::min(right, display_.width() - strut.right);
    }
    if (strut.top < screenBottom &&
        overlaps(strut.topStart, strut.topEnd, screen.left(), screenRight)) {
      top = std::max(top, strut.top);
    }
    if (display_.height() - strut.bottom > screen.top() &&
        overlaps(strut.bottomStart, strut.bottomEnd, screen.left(), screenRight)) {
      bottom = std::min(bottom, display_.height() - strut.bottom);
    }
  }
  return {left, top, std::max(0, right - left), std::max(0, bottom - top)};
}

}  // namespace zephyx
