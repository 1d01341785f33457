#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zephyx {

/// Names of selection targets that are treated in a way of their own.
namespace selectionTarget {
inline constexpr const char* utf8String = "UTF8_STRING";
inline constexpr const char* utf8Text = "text/plain;charset=utf-8";
inline constexpr const char* plainText = "text/plain";
inline constexpr const char* latin1String = "STRING";
inline constexpr const char* anyText = "TEXT";
inline constexpr const char* uriList = "text/uri-list";
inline constexpr const char* copiedFiles = "x-special/gnome-copied-files";
inline constexpr const char* mozillaUrl = "text/x-moz-url";
inline constexpr const char* netscapeUrl = "_NETSCAPE_URL";
inline constexpr const char* png = "image/png";
/// Its presence asks clipboard managers not to keep the copy.
inline constexpr const char* passwordHint = "x-kde-passwordManagerHint";
}  // namespace selectionTarget

/// The type under which copies that a password manager marks are reported.
inline constexpr const char* concealedType = "org.nspasteboard.ConcealedType";

/// One pasteboard type and the targets that can stand for it.
struct TypeOffer {
  std::string type;
  std::vector<std::string> targets;  ///< the best one first
  bool isText = false;
};

using TypeOffers = std::vector<TypeOffer>;

/// What an owner's targets mean as pasteboard types, in the owner's order, followed by the names of
/// the targets that mean nothing here. A URI list stays under its own name until its content has
/// told what it is (`nameUriList`).
TypeOffers typeOffers(const std::vector<std::string>& targets);

/// The targets that make up the contents, in the owner's order: without those that ask the owner to
/// do something or only mean something while it lives, and with one kind of bitmap. Programs offer
/// one picture in a dozen kinds, each encoded anew for whoever asks.
std::vector<std::string> targetsWorthSaving(const std::vector<std::string>& targets);

/// Null when `type` is not offered.
const TypeOffer* findOffer(const TypeOffers& offers, std::string_view type);

/// Gives the offered URI list the type of its first URI; an empty `type` takes the offer away.
void nameUriList(TypeOffers& offers, const std::string& type);

}  // namespace zephyx
