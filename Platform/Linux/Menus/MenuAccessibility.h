#pragma once

namespace zephyx {

/// From now on assistive technology finds in a `RowMenu` all its rows, and in a row with a view
/// what is in the view. May be called again.
void installMenuAccessibility();

}  // namespace zephyx
