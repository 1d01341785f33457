#!/usr/bin/env bash
# check-bundle.sh OUTPUT: walks through the making of Zephyx.app with stand-ins for Apple's tools and
# for the frameworks. CMake configures for a Mac, so its generated commands can be looked at.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."
output=$(realpath -m "$1")
rm -rf "$output"
mkdir -p "$output/tools" "$output/flutter/Release" "$output/sparkle" "$output/simdjson"

fail() { echo "bundle: $*" && exit 1; }

# framework FOLDER NAME VERSION
framework() {
  local folder=$1/$2.framework
  mkdir -p "$folder/Versions/$3/Resources"
  echo code >"$folder/Versions/$3/$2"
  ln -s "$3" "$folder/Versions/Current"
  ln -s "Versions/Current/$2" "$folder/$2"
}
for name in FlutterMacOS App some_plugin; do
  framework "$output/flutter/Release/$name.xcframework/macos-arm64_x86_64" $name A
done
framework "$output/sparkle" Sparkle B
inner=$output/sparkle/Sparkle.framework/Versions/B
mkdir -p "$inner/XPCServices/Downloader.xpc" "$inner/Updater.app"
echo code >"$inner/Autoupdate"
touch "$output/simdjson/simdjson.h" "$output/simdjson/simdjson.cpp"
printf 'import FlutterMacOS\nimport Foundation\nimport some_plugin\n' \
  >"$output/flutter/GeneratedPluginRegistrant.swift"

for tool in codesign xattr iconutil; do
  printf '#!/bin/sh\necho "%s $*" >>"%s"\n' $tool "$output/calls" >"$output/tools/$tool"
done
printf '#!/bin/sh\necho 13.0\n' >"$output/tools/sw_vers"
chmod +x "$output"/tools/*
export PATH=$output/tools:$PATH

# configure OPTION...: into $output/build; the transcript is in $output/transcript.
configure() {
  local clang
  clang=$(command -v clang++-19)
  rm -rf "$output/build"
  cmake -S . -B "$output/build" -G "Unix Makefiles" -DZEPHYX_TESTS=OFF -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_SYSTEM_NAME=Darwin -DCMAKE_SYSTEM_VERSION=22.0 -DCMAKE_OSX_SYSROOT=/ \
    -DCMAKE_OSX_DEPLOYMENT_TARGET=13.0 "-DCMAKE_OSX_ARCHITECTURES=arm64;x86_64" \
    -DCMAKE_CXX_COMPILER="$clang" -DCMAKE_CXX_COMPILER_WORKS=1 -DCMAKE_INSTALL_NAME_TOOL=/bin/true \
    -DCMAKE_OBJCXX_COMPILER="$clang" -DCMAKE_OBJCXX_COMPILER_WORKS=1 \
    -DZEPHYX_FLUTTER_OUTPUT="$output/flutter/Release" -DZEPHYX_SPARKLE="$output/sparkle" \
    -DZEPHYX_SIMDJSON="$output/simdjson" "$@" \
    >"$output/transcript" 2>&1
}

# refuses TEXT OPTION...: the configuration ends with an error that says TEXT.
refuses() {
  local text=$1
  shift
  if configure "$@"; then fail "configured without complaint: $text"; fi
  tr -s ' \n' ' ' <"$output/transcript" | grep -qF "$text" || fail "did not say: $text"
}
refuses "No FlutterMacOS.framework" -DZEPHYX_FLUTTER_OUTPUT=/nowhere
refuses "No Sparkle.framework" -DZEPHYX_SPARKLE=/nowhere
refuses "No simdjson.h" -DZEPHYX_SIMDJSON=/nowhere
refuses "No GeneratedPluginRegistrant.swift" -DZEPHYX_FLUTTER_REGISTRANT=/nowhere
printf 'import missing_plugin\n' >"$output/other.swift"
refuses 'registers the plug-in "missing_plugin"' -DZEPHYX_FLUTTER_REGISTRANT="$output/other.swift"

configure "-DZEPHYX_UPDATE_FEED=https://example.invalid/feed?a=1&b=<2>" -DZEPHYX_UPDATE_KEY=key= ||
  { cat "$output/transcript" && fail "cannot be configured"; }
grep -q -- '-Wl,-rpath,@executable_path/../Frameworks' "$output/build/CMakeFiles/zephyx.dir/link.txt" ||
  fail "no run path to the embedded frameworks"
grep -q -- '-arch arm64 -arch x86_64' "$output/build/CMakeFiles/zephyx.dir/link.txt" || fail "not universal"
python3 - "$output/build" <<'PYTHON'
import plistlib, sys
info = plistlib.load(open(sys.argv[1] + '/Zephyx.app/Contents/Info.plist', 'rb'))
entitlements = plistlib.load(open(sys.argv[1] + '/bundle/Zephyx.entitlements', 'rb'))
assert info['LSUIElement'] is True and info['LSMinimumSystemVersion'] == '13.0', info
assert info['SUFeedURL'] == 'https://example.invalid/feed?a=1&b=<2>', info
assert all(info.values()) and '@' not in str(info), info
assert entitlements == {'com.apple.security.cs.disable-library-validation': True}, entitlements
PYTHON

# The last step of the build, as CMake wrote it.
app=$output/build/Zephyx.app
command=$(grep -o "$PWD/Tools/finish-bundle.sh .*" "$output/build/CMakeFiles/zephyx.dir/build.make")
mkdir -p "$output/build/Platform/macOS" "$app/Contents/MacOS"
echo code >"$output/build/Platform/macOS/libZephyxPlugins.dylib"
bash -c "$command" || fail "cannot be finished"
[ -L "$app/Contents/Frameworks/App.framework/App" ] || fail "a framework's links were followed"
mapfile -t signed < <(sed -n 's/^codesign --force.* //p' "$output/calls")
[ "${signed[-1]}" = "$app" ] || fail "the application is not signed last"
for position in "${!signed[@]}"; do
  for later in "${signed[@]:position+1}"; do
    [[ $later != "${signed[position]}/"* ]] || fail "$later is signed after what it is inside of"
  done
done
for part in Sparkle.framework/Versions/B/{XPCServices/Downloader.xpc,Updater.app,Autoupdate} \
  {Sparkle,FlutterMacOS,App,some_plugin}.framework libZephyxPlugins.dylib; do
  [[ " ${signed[*]} " == *" $app/Contents/Frameworks/$part "* ]] || fail "$part is not signed"
done
echo "bundle: configured, embedded and signed by stand-ins"
