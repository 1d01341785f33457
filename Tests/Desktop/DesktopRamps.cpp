#include "Tests/Desktop/DesktopRamps.h"

#include <xcb/randr.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <stdexcept>

namespace zephyx {

DesktopRamps::DesktopRamps() {
  if (!connection_.isValid()) throw std::runtime_error("no display");
}

std::vector<DesktopRamps::Output> DesktopRamps::lit() {
  auto* c = connection_.get();
  const XReply<xcb_randr_get_screen_resources_current_reply_t> resources(
      xcb_randr_get_screen_resources_current_reply(
          c, xcb_randr_get_screen_resources_current(c, connection_.root()), nullptr));
  const auto* ids = xcb_randr_get_screen_resources_current_outputs(resources.get());
  std::vector<Output> outputs;
  for (int i = 0; i < resources->num_outputs; ++i) {
    const XReply<xcb_randr_get_output_info_reply_t> info(xcb_randr_get_output_info_reply(
        c, xcb_randr_get_output_info(c, ids[i], resources->config_timestamp), nullptr));
    if (!info || info->crtc == XCB_NONE) continue;
    const auto* name = reinterpret_cast<const char*>(xcb_randr_get_output_info_name(info.get()));
    outputs.push_back({ids[i], info->crtc, {name, name + info->name_len}});
  }
  return outputs;
}

DesktopRamps::Output DesktopRamps::find(const std::string& name) {
  for (const auto& output : lit()) {
    if (output.name == name) return output;
  }
  throw std::runtime_error("no output " + name);
}

std::vector<std::string> DesktopRamps::outputs() {
  std::vector<std::string> names;
  for (const auto& output : lit()) names.push_back(output.name);
  return names;
}

std::uint32_t DesktopRamps::crtcOf(const std::string& output) {
  return find(output).crtc;
}

DesktopRamps::Ramp DesktopRamps::ramp(const std::string& output) {
  auto* c = connection_.get();
  const XReply<xcb_randr_get_crtc_gamma_reply_t> reply(
      xcb_randr_get_crtc_gamma_reply(c, xcb_randr_get_crtc_gamma(c, find(output).crtc), nullptr));
  if (!reply) throw std::runtime_error("no ramp");
  const auto channel = [&](const std::uint16_t* levels) {
    return std::vector<std::uint16_t>(levels, levels + reply->size);
  };
  return {channel(xcb_randr_get_crtc_gamma_red(reply.get())),
          channel(xcb_randr_get_crtc_gamma_green(reply.get())),
          channel(xcb_randr_get_crtc_gamma_blue(reply.get()))};
}

void DesktopRamps::setRamp(const std::string& output, const Ramp& ramp) {
  auto* c = connection_.get();
  const auto request = xcb_randr_set_crtc_gamma_checked(
      c, find(output).crtc, static_cast<std::uint16_t>(ramp[0].size()), ramp[0].data(),
      ramp[1].data(), ramp[2].data());
  if (XReply<xcb_generic_error_t>(xcb_request_check(c, request))) {
    throw std::runtime_error("the ramp is refused");
  }
}

void DesktopRamps::sayIsPanel(const std::string& output) {
  const xcb_atom_t kind = connection_.atom("Panel");
  const auto request = xcb_randr_change_output_property_checked(
      connection_.get(), find(output).id, connection_.atom("ConnectorType"), XCB_ATOM_ATOM, 32,
      XCB_PROP_MODE_REPLACE, 1, &kind);
  if (XReply<xcb_generic_error_t>(xcb_request_check(connection_.get(), request))) {
    throw std::runtime_error("the property is refused");
  }
}

DesktopRamps::Ramp DesktopRamps::linear(double red, double green, double blue, std::size_t size) {
  const auto channel = [&](double top) {
    std::vector<std::uint16_t> levels(size);
    for (std::size_t i = 0; i < size; ++i) {
      levels[i] = static_cast<std::uint16_t>(
          std::lround(top * 65535 * static_cast<double>(i) / static_cast<double>(size - 1)));
    }
    return levels;
  };
  return {channel(red), channel(green), channel(blue)};
}

int DesktopRamps::distance(const Ramp& a, const Ramp& b) {
  int greatest = 0;
  for (std::size_t channel = 0; channel < a.size(); ++channel) {
    if (a[channel].size() != b[channel].size()) return std::numeric_limits<int>::max();
    for (std::size_t i = 0; i < a[channel].size(); ++i) {
      greatest = std::max(greatest, std::abs(a[channel][i] - b[channel][i]));
    }
  }
  return greatest;
}

}  // namespace zephyx
