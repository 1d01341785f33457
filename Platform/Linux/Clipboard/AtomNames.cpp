#include "Platform/Linux/Clipboard/AtomNames.h"

#include <utility>

#include "Platform/Linux/X11.h"

namespace zephyx {
namespace {
// A program that invents names with each copy must not make the table grow for ever.
constexpr std::size_t mostKnown = 4096;
// The server takes names of 64 KB; those of real formats have less than a hundred letters.
constexpr int longestName = 1024;
}  // namespace

std::vector<std::string> AtomNames::names(std::span<const xcb_atom_t> atoms) {
  if (known_.size() > mostKnown) known_.clear();

  std::vector<std::pair<xcb_atom_t, xcb_get_atom_name_cookie_t>> asked;
  for (const auto atom : atoms) {
    if (atom != XCB_NONE && known_.try_emplace(atom).second) {
      asked.emplace_back(atom, xcb_get_atom_name(connection_, atom));
    }
  }
  for (const auto& [atom, cookie] : asked) {
    const XReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(connection_, cookie, nullptr));
    if (!reply || xcb_get_atom_name_name_length(reply.get()) > longestName) continue;
    known_[atom].assign(xcb_get_atom_name_name(reply.get()),
                        static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get())));
  }

  std::vector<std::string> names;
  names.reserve(atoms.size());
  for (const auto atom : atoms) {
    const auto known = known_.find(atom);
    if (known != known_.end() && !known->second.empty()) names.push_back(known->second);
  }
  return names;
}

}  // namespace zephyx
