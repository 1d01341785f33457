#pragma once

namespace zephyx {

/// From now on assistive technology finds views of the host's own drawing and symbols by what they
/// say about themselves: buttons, gauges, groups and pictures. May be called again.
void installViewAccessibility();

}  // namespace zephyx
