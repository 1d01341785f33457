#!/usr/bin/env bash
# tidy.sh BUILD-FOLDER JOBS: clang-tidy over the program's own sources.
set -euo pipefail
build=$1
jobs=$2

# The compiler's precompiled headers mean nothing to the analysis, which reads every source alone.
mkdir -p "$build/tidy"
sed 's/-Winvalid-pch -include [^ ]*cmake_pch\.hxx//' "$build/compile_commands.json" \
  >"$build/tidy/compile_commands.json"
sed -n 's/^ *"file": "\(.*\)".*/\1/p' "$build/tidy/compile_commands.json" | sort -u |
  grep -E "^$PWD/(Channel|Runner|Platform|Screens)/" |
  xargs -d '\n' -P "$jobs" -n 1 Tools/tidy-one.sh "$build/tidy"
