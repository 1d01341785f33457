#include "Platform/Linux/Displays/RandrCrtcs.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "Platform/Linux/Displays/DisplayConnectors.h"

namespace zephyx {

RandrCrtcs::RandrCrtcs(xcb_connection_t* connection) {
  if (!connection) return;
  const auto* extension = xcb_get_extension_data(connection, &xcb_randr_id);
  if (extension && extension->present) connection_.emplace(connection);
}

std::vector<Display> RandrCrtcs::inUse() {
  if (!connection_) return {};
  auto* c = connection_->get();
  // Not the request that asks the hardware, which takes a second.
  const XReply<xcb_randr_get_screen_resources_current_reply_t> resources(
      xcb_randr_get_screen_resources_current_reply(
          c, xcb_randr_get_screen_resources_current(c, connection_->root()), nullptr));
  if (!resources) return {};
  std::vector<Display> displays;
  const auto* crtcs = xcb_randr_get_screen_resources_current_crtcs(resources.get());
  for (int i = 0; i < resources->num_crtcs; ++i) {
    const XReply<xcb_randr_get_crtc_info_reply_t> info(xcb_randr_get_crtc_info_reply(
        c, xcb_randr_get_crtc_info(c, crtcs[i], resources->config_timestamp), nullptr));
    if (!info || info->mode == XCB_NONE || info->num_outputs == 0) continue;
    const auto* outputs = xcb_randr_get_crtc_info_outputs(info.get());
    displays.push_back(
        {crtcs[i], std::any_of(outputs, outputs + info->num_outputs,
                               [&](xcb_randr_output_t output) { return isBuiltin(output); })});
  }
  return displays;
}

bool RandrCrtcs::isBuiltin(xcb_randr_output_t output) {
  auto* c = connection_->get();
  const XReply<xcb_randr_get_output_info_reply_t> info(xcb_randr_get_output_info_reply(
      c, xcb_randr_get_output_info(c, output, XCB_CURRENT_TIME), nullptr));
  if (!info) return false;
  const std::string_view name(
      reinterpret_cast<const char*>(xcb_randr_get_output_info_name(info.get())),
      static_cast<std::size_t>(xcb_randr_get_output_info_name_length(info.get())));
  if (isBuiltinConnector(name)) return true;
  // Drivers with names of their own may say it this way.
  const XReply<xcb_randr_get_output_property_reply_t> type(xcb_randr_get_output_property_reply(
      c,
      xcb_randr_get_output_property(c, output, connection_->atom("ConnectorType"), XCB_ATOM_ATOM, 0,
                                    1, 0, 0),
      nullptr));
  if (!type || type->num_items != 1 || type->format != 32) return false;
  xcb_atom_t kind = XCB_NONE;
  std::memcpy(&kind, xcb_randr_get_output_property_data(type.get()), sizeof kind);
  return kind == connection_->atom("Panel");
}

std::optional<GammaRamp> RandrCrtcs::ramp(xcb_randr_crtc_t crtc) {
  if (!connection_) return std::nullopt;
  auto* c = connection_->get();
  const XReply<xcb_randr_get_crtc_gamma_reply_t> reply(
      xcb_randr_get_crtc_gamma_reply(c, xcb_randr_get_crtc_gamma(c, crtc), nullptr));
  if (!reply || reply->size == 0) return std::nullopt;
  const auto* red = xcb_randr_get_crtc_gamma_red(reply.get());
  const auto* green = xcb_randr_get_crtc_gamma_green(reply.get());
  const auto* blue = xcb_randr_get_crtc_gamma_blue(reply.get());
  GammaRamp ramp{
      {red, red + reply->size}, {green, green + reply->size}, {blue, blue + reply->size}};
  return ramp.isBlack() ? GammaRamp::identity(reply->size) : ramp;
}

bool RandrCrtcs::setRamp(xcb_randr_crtc_t crtc, const GammaRamp& ramp) {
  if (!connection_) return false;
  auto* c = connection_->get();
  const auto request =
      xcb_randr_set_crtc_gamma_checked(c, crtc, static_cast<std::uint16_t>(ramp.red.size()),
                                       ramp.red.data(), ramp.green.data(), ramp.blue.data());
  return !XReply<xcb_generic_error_t>(xcb_request_check(c, request));
}

}  // namespace zephyx
