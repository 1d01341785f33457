#!/usr/bin/env bash
# check-macos.sh DECLARATIONS OUTPUT JOBS: compiles every macOS source for both processors against the
# declarations of Apple's frameworks, the portable sources too, looks every name in them up, and walks
# through the making of the bundle. Objects and transcripts go to OUTPUT.
set -uo pipefail
declarations=$(realpath "$1")
output=$(realpath -m "$2")
jobs=$3
minimum=13.0
root=$PWD
rm -rf "$output"
mkdir -p "$output/names" "$output/include"
# Debian's build of the Mac's standard library does not say since which macOS each piece of it is there.
sed '/define _LIBCPP_HAS_NO_VENDOR_AVAILABILITY_ANNOTATIONS/d' \
  /usr/lib/llvm-19/include/c++/v1/__config_site >"$output/include/__config_site" || exit
# The type checker puts an <inttypes.h> of its own before the library's, which this one leads on to.
cp /usr/lib/llvm-19/include/c++/v1/inttypes.h "$output/include" || exit

# The compiler's warnings are those of the real build.
warnings=$(sed -n '/^target_compile_options(zephyx_options/,/)/p' cmake/ZephyxTargets.cmake |
  grep -oE -- '-W[a-z-]+' | sort -u | tr '\n' ' ')
export declarations output root minimum warnings

files() {
  git ls-files --cached --others --exclude-standard --deduplicate -- "$@" |
    while IFS= read -r file; do [ ! -f "$file" ] || printf "%s\n" "$file"; done
}

# compile ARCHITECTURE FOLDER FILE FLAG...: an object in that folder of the architecture's. The type
# checker keeps files of its own in TMPDIR, which two of them must not share.
compile() {
  local architecture=$1 folder=$output/$1/$2 file=$3 status
  mkdir -p "$folder"
  cd "$folder" || return
  TMPDIR=$(mktemp -d)
  export TMPDIR
  # shellcheck disable=SC2086
  "$declarations/typecheck.sh" "$architecture" --emit "$file" -- -I"$output/include" -I"$root" \
    -idirafter /usr/include $warnings -Werror "${@:4}"
  status=$?
  rm -r "$TMPDIR"
  return $status
}

# precompile ARCHITECTURE: reads what nearly every source includes, once. Whether each source includes
# what it needs shows when its names are looked up, which is done without.
precompile() { compile "$1" . "$output/common.h" -x objective-c++-header; }

# compile_with_common ARCHITECTURE FOLDER FILE FLAG...
compile_with_common() { compile "$@" -include-pch "$output/$1/common.$1.o"; }

# look_up FILE...: every name as the compiler understands it. Newer names are for information: the
# compiler has refused those outside @available.
look_up() {
  local transcript status
  transcript=$(mktemp "$output/names/XXXXXX")
  python3 "$declarations/check_api.py" --engine ast --min "$minimum" --include "$root" "$@" \
    >"$transcript" 2>&1
  status=$?
  grep -E '^(UNKNOWN|NEAR-MISS) ' "$transcript" && return 1
  [ $status -eq 0 ] || cat "$transcript"
  return $status
}
export -f compile precompile compile_with_common look_up

mapfile -t sources < <(files 'Platform/macOS/*.mm')
mapfile -t portable < <(files 'Runner/*.cpp' 'Channel/*.cpp' 'Platform/*.cpp' ':!Platform/Linux')
if [ ${#sources[@]} -eq 0 ] || [ ${#portable[@]} -eq 0 ]; then
  echo "no sources found"
  exit 1
fi

printf '%s\n' '#import <AppKit/AppKit.h>' '#include <functional>' '#include <memory>' \
  '#include <optional>' '#include <string>' '#include <vector>' >"$output/common.h"
# The portable sources have been compiled one by one for Linux; here eight of a folder go together, where
# a name of one may hide another's.
for folder in $(dirname "${portable[@]}" | sort -u); do
  printf '#include "%s"\n' $(printf '%s\n' "${portable[@]}" | grep "^$folder/[^/]*$") |
    split --lines 8 --additional-suffix .mm - "$output/${folder//\//-}-"
done

run_each() { xargs -d '\n' -P "$jobs" -I{} bash -c '{} || { echo "failed: {}"; exit 1; }'; }
printf 'precompile %s\n' arm64 x86_64 | run_each && {
  printf '%s\n' "${sources[@]}" | xargs -n 8 echo look_up
  for file in "${sources[@]}"; do
    printf 'compile_with_common %s %s %s\n' arm64 "$(dirname "$file")" "$root/$file" \
      x86_64 "$(dirname "$file")" "$root/$file"
  done
  for file in "$output"/*.mm; do printf 'compile_with_common arm64 . %s -Wno-shadow\n' "$file"; done
} | run_each
status=$?

if [ $status -eq 0 ]; then
  for architecture in arm64 x86_64; do
    count=$(find "$output/$architecture/Platform/macOS" -name '*.o' | wc -l)
    echo "$architecture: $count objects of ${#sources[@]} macOS sources"
    [ "$count" -eq ${#sources[@]} ] || status=1
  done
  echo "newer than macOS $minimum, so inside @available:"
  grep -hE '^NEWER +[a-z]' "$output"/names/* | sed -E 's/^NEWER +[a-z]+ +/  /' | sort -u
fi
Tools/check-bundle.sh "$output/bundle" || status=1
exit $status
