#!/usr/bin/env bash
# render-icon.sh: the Mac application's icon in all its sizes, from its two drawings. Needs rsvg-convert.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../Platform/macOS/Icon"
set_folder=Zephyx.iconset
rm -rf "$set_folder"
mkdir "$set_folder"

# render PIXELS NAME
render() {
  local drawing=Icon.svg
  [ "$1" -gt 32 ] || drawing=SmallIcon.svg
  rsvg-convert --width "$1" --height "$1" "$drawing" --output "$set_folder/icon_$2.png"
}

for points in 16 32 128 256 512; do
  render "$points" "${points}x$points"
  render $((points * 2)) "${points}x$points@2x"
done
