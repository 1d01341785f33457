#pragma once

#include <xcb/xcb.h>

#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace zephyx {

/// The names of atoms that other programs chose. Unknown ones are asked for together, so that a
/// list of a hundred costs one round trip. Used by the connection's thread.
class AtomNames {
 public:
  explicit AtomNames(xcb_connection_t* connection) : connection_(connection) {}

  /// In the order of `atoms`; atoms without a name, or with one that is no format's, are left out.
  std::vector<std::string> names(std::span<const xcb_atom_t> atoms);

 private:
  xcb_connection_t* connection_;
  std::unordered_map<xcb_atom_t, std::string> known_;
};

}  // namespace zephyx
