#!/usr/bin/env bash
# Who may include whom, and where no operating system and no toolkit may be seen. Prints each breach.
set -uo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." || exit
status=0

# report TITLE: prints the lines on standard input, if any, as breaches.
report() {
  local lines
  lines=$(cat)
  [ -z "$lines" ] && return
  printf '%s:\n%s\n' "$1" "$lines"
  status=1
}

# rule FOLDER ALLOWED [FILE-PATTERN]: project includes of the folder's own files start with ALLOWED.
rule() {
  local folder=$1 allowed=$2
  shift 2
  report "$folder may include only $allowed" < <(
    grep -d skip -nE '^\s*#\s*(include|import)\s*"' "$@" /dev/null | grep -vE ":\s*#\s*(include|import)\s*\"($allowed)")
}

shopt -s nullglob
rule Channel 'Channel/|Platform/BinaryMessenger\.h' Channel/*
rule Platform 'Platform/[A-Za-z]+\.h' Platform/*.h Platform/*.cpp
runner=()
for file in Runner/*.h Runner/*.cpp; do [ "$file" = Runner/main.cpp ] || runner+=("$file"); done
rule Runner 'Runner/|Channel/|Platform/[A-Za-z]+\.h' "${runner[@]}"
rule Runner/main.cpp 'Runner/|Platform/[A-Za-z]+\.h' Runner/main.cpp
rule Platform/Linux 'Platform/([A-Za-z]+\.h|Linux/)|Channel/' Platform/Linux/*.{h,cpp} Platform/Linux/*/*.{h,cpp}
rule Platform/macOS 'Platform/([A-Za-z]+\.h|macOS/)|Channel/' Platform/macOS/*
rule Screens 'Screens/|Platform/([A-Za-z]+\.h|Linux/(Engines/ScreenProgram|Symbols/SymbolPath)\.h)|Channel/' Screens/*.h Screens/*.cpp
rule Tests/Simulated 'Tests/Simulated/|Platform/[A-Za-z]+\.h|Channel/' Tests/Simulated/*

portable=(Channel/*.h Channel/*.cpp Runner/*.h Runner/*.cpp Platform/*.h Platform/*.cpp)
report "toolkit or system header in portable code" < <(
  grep -nE '#\s*(include|import)\s*<(Q[A-Z]|Qt|xcb|X11|xkbcommon|Cocoa|AppKit|Foundation/|CoreFoundation|Carbon|IOKit|pulse|gtk|glib|windows\.h)' \
    "${portable[@]}" /dev/null)
report "operating system told apart in portable code" < <(
  grep -nE '#\s*(if|ifdef|ifndef|elif).*(__APPLE__|__linux__|__unix__|_WIN32|TARGET_OS_|Q_OS_)' "${portable[@]}" /dev/null)
report "Runner/ is one flat folder" < <(find Runner -mindepth 2 -type f)
exit $status
