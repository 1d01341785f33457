#!/usr/bin/env bash
# finish-bundle.sh APP ICONSET IDENTITY ENTITLEMENTS LIBRARY...: gives the bundle its icon, embeds the
# frameworks and libraries, and signs: nested code first, from the innermost outwards, then the whole.
set -euo pipefail
app=$1
iconset=$2
identity=$3
entitlements=$4
shift 4
frameworks=$app/Contents/Frameworks

mkdir -p "$app/Contents/Resources"
iconutil --convert icns --output "$app/Contents/Resources/Zephyx.icns" "$iconset"

rm -rf "$frameworks"
mkdir -p "$frameworks"
# A framework is held together by symbolic links, which must stay links.
for library in "$@"; do cp -RP "$library" "$frameworks/"; done
# What a download or a network folder left at the files would make the signature refuse them.
xattr -cr "$app"

timestamp=--timestamp
[ "$identity" != - ] || timestamp=--timestamp=none
sign() { codesign --force --sign "$identity" --options runtime "$timestamp" "$@"; }

# Sparkle's installer is a program without a suffix. Entitlements belong to programs: nested ones keep
# their own, and libraries have none.
find "$frameworks" -depth ! -type l \
  \( -name '*.xpc' -o -name '*.app' -o -name '*.framework' -o -name '*.dylib' -o -name Autoupdate \) -print0 |
  while IFS= read -r -d '' nested; do
    sign --preserve-metadata=entitlements "$nested"
  done
sign --entitlements "$entitlements" "$app"
codesign --verify --deep --strict "$app"
